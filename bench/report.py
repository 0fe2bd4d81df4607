"""Turns game_bench's JSON (standard input) into a table of the figures beside their budgets."""

import json
import sys

# In microseconds.
BUDGETS = {
    "evaluation": 10,
    "computersTurn": 25,
    "tickWithNothingChanged": 8,
    "painting/percent:100": 1000,
    "paintingAfterTheRingMoved/percent:100": 30,
    "paintingAfterTheRingMoved/percent:300": 100,
}
# How many times as long as the second the first may take. What no longer fits the processor's cache may take half as
# long again.
RATIOS = {
    ("evaluation", "obviousEvaluation"): 1 / 100,
    ("setAndGetVar/entries:100000", "setAndGetVar/entries:1000"): 1.5,
    ("getTagAfterNestedOnes/KB:1000", "getTagAfterNestedOnes/KB:10"): 150,
}
IN_MICROSECONDS = {"ns": 1e-3, "us": 1, "ms": 1e3}


def main():
    runs = {}
    for run in json.load(sys.stdin)["benchmarks"]:
        if run["run_type"] == "aggregate":
            continue
        runs.setdefault(run["run_name"], []).append(run["cpu_time"] * IN_MICROSECONDS[run["time_unit"]])
    # What a run takes longer than the best is other programs' doing.
    best = {name: min(times) for name, times in runs.items()}
    print("| what | best run | budget | of the budget |")
    print("|---|---:|---:|---:|")
    for name, figure in best.items():
        budget = BUDGETS.get(name)
        allowed = f"{budget} us | {figure / budget:.0%}" if budget else " | "
        print(f"| {name} | {figure:,.2f} us | {allowed} |")
    for (name, other), allowed in RATIOS.items():
        ratio = best[name] / best[other]
        print(f"| {name} : {other} | {ratio:.3g} | {allowed:.3g} | {ratio / allowed:.0%} |")
    print()


if __name__ == "__main__":
    main()
