"""Runs clang-tidy on the project's own files, as tools/lint tidy [FILE...].

Every source file is looked at once: as build/native compiles it or, where only Windows does, as build/windows does.
What a file gave is remembered in build/tidy for as long as nothing that it is compiled from changes.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
REMEMBERED = ROOT / "build" / "tidy"
FOLDERS = ("src", "tests", "bench", "fuzz", "tools")
COMPILERS = {"native": "g++", "windows": "x86_64-w64-mingw32-g++-posix", "fuzz": "clang++"}


def extra_arguments(build):
    """What clang must be told to compile a file as the build's compiler does."""
    arguments = ["-Wno-unknown-warning-option", "-Wno-unused-command-line-argument"]
    if build == "windows":
        arguments.append("--target=x86_64-w64-windows-gnu")
        # The compiler's standard headers, but not those that belong to the compiler itself: clang has its own.
        asked = subprocess.run([COMPILERS[build], "-E", "-v", "-x", "c++", "/dev/null"], capture_output=True, text=True)
        listed = asked.stderr.split("search starts here:\n")[-1].split("End of search list")[0].split()
        arguments += [f"-isystem{folder}" for folder in listed if not folder.endswith(("/include-fixed", "-posix/include"))]
    return [f"--extra-arg={argument}" for argument in arguments]


def own_files():
    """Gives {file: (build that compiles it, its compile command)} for the project's files."""
    files = {}
    for build in COMPILERS:
        database = ROOT / "build" / build / "compile_commands.json"
        if not database.exists():
            if build == "fuzz":
                continue
            sys.exit(f"lint: {database.relative_to(ROOT)} is missing; configure that build first")
        for entry in json.loads(database.read_text()):
            path = pathlib.Path(entry["directory"], entry["file"]).resolve()
            ours = path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] in FOLDERS
            if ours and path.suffix == ".cpp":
                files.setdefault(path, (build, entry))
    return files


def fingerprint(entry, arguments):
    """A text that changes with the file, every header of the project that it reads, its flags and the checks."""
    command = shlex.split(entry["command"])
    output = command.index("-o")
    del command[output:output + 2]
    listed = subprocess.run(command + ["-MM", "-MF", "-"], cwd=entry["directory"], capture_output=True, text=True)
    if listed.returncode != 0:
        return None
    digest = hashlib.sha256(repr((command, arguments)).encode())
    for name in [ROOT / ".clang-tidy"] + listed.stdout.replace("\\\n", " ").split(": ", 1)[1].split():
        digest.update(pathlib.Path(entry["directory"], name).read_bytes())
    return digest.hexdigest()


def check(path, build, entry, arguments):
    """Gives (path, what clang-tidy said; nothing when the file is clean)."""
    stamp = REMEMBERED / str(path.relative_to(ROOT)).replace("/", "__")
    state = fingerprint(entry, arguments)
    if state and stamp.exists() and stamp.read_text() == state:
        return path, ""
    result = subprocess.run(
        ["clang-tidy", "--quiet", "-p", ROOT / "build" / build, *arguments, path], capture_output=True, text=True)
    if result.returncode == 0 and state:
        stamp.write_text(state)
    return path, "" if result.returncode == 0 else result.stdout + result.stderr


def main():
    files = own_files()
    wanted = {pathlib.Path(name).resolve() for name in sys.argv[1:]} or files.keys()
    arguments = {build: extra_arguments(build) for build in COMPILERS}
    REMEMBERED.mkdir(parents=True, exist_ok=True)
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = [pool.submit(check, path, *files[path], arguments[files[path][0]])
                for path in sorted(wanted) if path in files]
        for job in concurrent.futures.as_completed(jobs):
            path, complaints = job.result()
            if complaints:
                failed += 1
                print(f"{path.relative_to(ROOT)}:\n{complaints}", flush=True)
    print(f"clang-tidy looked at {len(jobs)} files, {failed} of them failed")
    return failed or not jobs


if __name__ == "__main__":
    sys.exit(1 if main() else 0)
