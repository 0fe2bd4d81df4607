"""Turns game_bench's JSON (standard input) into a table, beside the budgets."""

import json
import sys

# In microseconds, for the largest board.
BUDGETS = {
    "evaluation/size:30/oneIn:3": 40,
    "computersTurn": 150,
    "tickWithNothingChanged": 15,
    "painting/percent:100": 1000,
}
FEWEST_TIMES_FASTER = 100
IN_MICROSECONDS = {"ns": 1e-3, "us": 1, "ms": 1e3}


def main():
    medians = {
        run["run_name"]: run["cpu_time"] * IN_MICROSECONDS[run["time_unit"]]
        for run in json.load(sys.stdin)["benchmarks"]
        if run.get("aggregate_name") == "median"
    }
    if not medians:
        sys.exit("report: game_bench gave no figures")
    print("| what | median, us | budget, us | of the budget |")
    print("|---|---:|---:|---:|")
    for name, figure in medians.items():
        budget = BUDGETS.get(name)
        share = f"{100 * figure / budget:.0f} %" if budget else ""
        print(f"| {name} | {figure:.3g} | {budget or ''} | {share} |")
    print()
    print("| evaluation | times faster than the obvious way |")
    print("|---|---:|")
    for name, figure in medians.items():
        if name.startswith("evaluation/"):
            times = medians[name.replace("evaluation", "obviousEvaluation")] / figure
            budget = f" (budget {FEWEST_TIMES_FASTER})" if name in BUDGETS else ""
            print(f"| {name.removeprefix('evaluation/')} | {times:.0f}{budget} |")
    print()


if __name__ == "__main__":
    main()
