"""Measures the game's window under Wine beside a bare one.

    tools/virtual-display tools/under-wine /usr/bin/python3 bench/measure_windows.py window_bench.exe

Start: from the command to the window on the screen, alternately, the Wine server up. At rest: the processes' own CPU
time over 40 s, side by side, and their memory after that. An answer: from the release of the mouse button to the
painting of the computer's stone.
"""

import contextlib
import pathlib
import random
import re
import statistics
import sys
import time
import unittest

SOURCES = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(SOURCES / "tests"))
import game_test  # noqa: E402
from Xlib.ext import damage  # noqa: E402

STARTS = 15
SECONDS_AT_REST = 40
ANSWERS = 100

START_BUDGET = 1.4  # times the bare window's
CPU_BUDGET = 0.3  # % of a core more than the bare window
MEMORY_BUDGET = 6.5  # MB more
ANSWER_BUDGET = 20  # ms
SIZE_BUDGET = 1.2  # MB


class Program:
    """A program with a window, until the end of its `with`."""

    def __init__(self, *command):
        self.test = unittest.TestCase()
        begin = time.monotonic()
        self.game = game_test.Game(self.test, *command, board=False)
        self.start_milliseconds = 1000 * (time.monotonic() - begin)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.test.doCleanups()

    def cpu_seconds(self):
        threads = pathlib.Path(f"/proc/{self.game.process.pid}/task").glob("*/schedstat")
        return sum(int(thread.read_text().split()[0]) for thread in threads) / 1e9

    def memory(self):
        """In MB."""
        rollup = pathlib.Path(f"/proc/{self.game.process.pid}/smaps_rollup").read_text()
        return int(re.search(r"^Pss:\s+(\d+)", rollup, re.MULTILINE)[1]) / 1024


def start_times(*programs):
    times = [[] for _ in programs]
    for _ in range(STARTS):
        for command, found in zip(programs, times):
            with Program(*command) as program:
                found.append(program.start_milliseconds)
            time.sleep(0.3)
    return [statistics.median(found) for found in times]


def at_rest(*commands):
    """Each one's share of a core in percent, and its memory."""
    with contextlib.ExitStack() as stack:
        programs = [stack.enter_context(Program(*command)) for command in commands]
        time.sleep(3)
        begin, before = time.monotonic(), [program.cpu_seconds() for program in programs]
        time.sleep(SECONDS_AT_REST)
        after, seconds = [program.cpu_seconds() for program in programs], time.monotonic() - begin
        shares = [100 * (end - start) / seconds for start, end in zip(before, after)]
        return [(share, program.memory()) for share, program in zip(shares, programs)]


def blue_stones(game):
    """How many there are, from the pixel rows through the middle of the cells: the whole board takes longer to read."""
    left, top, width, _ = game.place(game_test.BOARD)
    centres = game.cell_centres(width)
    rows = [game_test.look(left, top + y, width, 1) for y in centres]
    return sum(game_test.MEANINGS.get(row[x]) in ("b", "B") for row in rows for x in centres)


def answer_times():
    """In milliseconds. The player takes good cells, so that games are long."""
    test = unittest.TestCase()
    game = game_test.Game(test)
    game_test.DISPLAY.damage_query_version()
    game.window.damage_create(damage.DamageReportRawRectangles)
    times = []
    while len(times) < ANSWERS:
        if game.start_is_shown():
            game.start()
        position = game_test.wait_for(game.position)
        empty = game_test.empty_cells(position)
        game.point_at(max(empty, key=lambda cell: game_test.value(position, cell)))
        stones = blue_stones(game)
        time.sleep(random.uniform(0, 0.02))  # or every click would come right after a tick
        game_test.press(1)
        while game_test.DISPLAY.pending_events():
            game_test.DISPLAY.next_event()
        painted, begin = None, 1000 * time.monotonic()
        game_test.release(1)
        while blue_stones(game) == stones or game_test.DISPLAY.pending_events():
            painted = game_test.DISPLAY.next_event()
        # A stone that wins is not answered.
        if "R" not in game_test.wait_for(game.position).values():
            times.append((painted.timestamp - begin) % 2**32)  # both clocks are the system's monotonic one
    test.doCleanups()
    return sorted(times)


def row(what, bare, figure, used, budget, unit):
    bare = f"{bare:.2f} {unit}" if bare else ""
    print(f"| {what} | {bare} | {figure:.2f} {unit} | {used:.2f} of {budget} | {used / budget:.0%} |")


def main():
    bench = sys.argv[1]
    with Program(bench, "bare"):  # keeps the Wine server up
        bare_start, start = start_times((bench, "bare"), (str(game_test.GAME),))
        answers = answer_times()
    (bare_cpu, bare_memory), (cpu, memory) = at_rest((bench, "bare"), (bench, "full"))
    size = game_test.GAME.stat().st_size / 1e6

    print("| what | bare window | the game | budget | of the budget |")
    print("|---|---:|---:|---:|---:|")
    row("start to visible window, median", bare_start, start, start / bare_start, START_BUDGET, "ms")
    row("from a click to the computer's stone, median", 0, answers[len(answers) // 2], answers[len(answers) // 2],
        ANSWER_BUDGET, "ms")
    print(f"| the same, 95th percentile | | {answers[len(answers) * 95 // 100]:.2f} ms | | |")
    row("CPU at rest, full board", bare_cpu, cpu, cpu - bare_cpu, CPU_BUDGET, "%")
    row("own memory (PSS), full board", bare_memory, memory, memory - bare_memory, MEMORY_BUDGET, "MB")
    row("FiveInARow.exe", 0, size, size, SIZE_BUDGET, "MB")


if __name__ == "__main__":
    main()
