"""Measures the game's window under Wine beside a bare one: python3 measure_windows.py FiveInARow.exe window_bench.exe

Runs in tools/virtual-display and tools/under-wine. Start: from the command to the window on the screen, alternately, the
Wine server up. At rest: the process's own CPU time over 20 s, twice for each window, and its memory after that.
"""

import os
import pathlib
import statistics
import subprocess
import sys
import time

STARTS = 15
SECONDS_AT_REST = 20
ROUNDS_AT_REST = 2
TICKS = os.sysconf("SC_CLK_TCK")
# A start may take 50 ms more where the bare window takes 91, and so on a slower machine.
START_BUDGET_TIMES = (91 + 50) / 91
CPU_BUDGET_MORE = 0.5
# 15 MB where the bare window has 8: how much of the system's own is shared depends on what else runs.
MEMORY_BUDGET_MORE = 7


class Program:
    """A window that was started, until the end of its `with`."""

    def __init__(self, command):
        begin = time.monotonic()
        self.process = subprocess.Popen([os.environ["WINE"], *command])
        while not self.is_seen():
            if self.process.poll() is not None or time.monotonic() - begin > 60:
                sys.exit(f"measure: the window of {command[0]} did not appear")
        self.start_milliseconds = 1000 * (time.monotonic() - begin)

    def is_seen(self):
        search = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.process.pid), "--name", "."]
        return subprocess.run(search, capture_output=True, check=False).stdout != b""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        # Wine's loader becomes the program itself.
        self.process.kill()
        self.process.wait()

    def file(self, name):
        return pathlib.Path(f"/proc/{self.process.pid}/{name}").read_text()

    def cpu_seconds(self):
        fields = self.file("stat").rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / TICKS

    def memory_megabytes(self):
        rollup = dict(line.split(":", 1) for line in self.file("smaps_rollup").splitlines()[1:])
        return int(rollup["Pss"].split()[0]) / 1024

    def at_rest(self):
        """The share of a core in percent, and the memory."""
        time.sleep(3)
        begin, cpu = time.monotonic(), self.cpu_seconds()
        time.sleep(SECONDS_AT_REST)
        share = 100 * (self.cpu_seconds() - cpu) / (time.monotonic() - begin)
        return share, self.memory_megabytes()


def row(what, bare, figure, allowed, unit):
    print(f"| {what} | {bare:.2f} {unit} | {figure:.2f} {unit} | {allowed:.2f} {unit} | {100 * figure / allowed:.0f} % |")


def main():
    game, bench = sys.argv[1:]
    kinds = {
        "bare": [bench, "bare"],
        "empty board": [game],
        "full board": [bench, "full"],
    }
    starts = {kind: [] for kind in kinds}
    at_rest = {kind: [] for kind in kinds}
    with Program(kinds["bare"]):  # keeps the Wine server up
        for _ in range(STARTS):
            for kind in ("bare", "empty board"):
                with Program(kinds[kind]) as program:
                    starts[kind].append(program.start_milliseconds)
                time.sleep(0.3)
    for _ in range(ROUNDS_AT_REST):
        for kind, command in kinds.items():
            with Program(command) as program:
                at_rest[kind].append(program.at_rest())
    cpu = {kind: statistics.mean(share for share, _ in runs) for kind, runs in at_rest.items()}
    memory = {kind: statistics.mean(size for _, size in runs) for kind, runs in at_rest.items()}
    start = {kind: statistics.median(times) for kind, times in starts.items() if times}

    print("| what | bare window | the game | allowed | of that |")
    print("|---|---:|---:|---:|---:|")
    row("start to visible window (median)", start["bare"], start["empty board"], start["bare"] * START_BUDGET_TIMES, "ms")
    for kind in ("empty board", "full board"):
        row(f"CPU at rest, {kind}", cpu["bare"], cpu[kind], cpu["bare"] + CPU_BUDGET_MORE, "%")
    for kind in ("empty board", "full board"):
        row(f"own memory (PSS), {kind}", memory["bare"], memory[kind], memory["bare"] + MEMORY_BUDGET_MORE, "MB")


if __name__ == "__main__":
    main()
