#!/usr/bin/env python3
"""Runs the scaling program several times, one and two ranks in turn, and prints medians.

    measure.py PROGRAM [--cells N] [--repeat N] [--cut-cells N]

Turns spread what else the machine does over all kinds of runs. Beside the time by the clock stands
the work: seconds on a core without halo exchanges, of the rank with most of it.
"""

import argparse
import json
import os
import statistics
import subprocess
import sys

ENVIRONMENT = {
    "OMPI_ALLOW_RUN_AS_ROOT": "1",
    "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM": "1",
    "OMPI_MCA_rmaps_base_oversubscribe": "1",
    "OMPI_MCA_mpi_yield_when_idle": "1",
    "OMPI_MCA_hwloc_base_binding_policy": "none",
}
STEPS = ("mesh", "join", "bind", "library")
HALF = "1 rank, half the cells"
APART = "two such runs at once"  # what the machine gives to two ranks at best


def start(ranks, command):
    return subprocess.Popen(["mpiexec", "-n", str(ranks)] + command, stdout=subprocess.PIPE,
                            text=True, env={**os.environ, **ENVIRONMENT})


def finish(process):
    output = process.communicate()[0]
    if process.returncode != 0:
        sys.exit(f"{process.args} ended with {process.returncode}")
    return [json.loads(line) for line in output.splitlines()]


def lines(ranks, command):
    return finish(start(ranks, command))


def apart(command):
    """Two processes that know nothing of each other; the slower one at each step."""
    first, second = [finish(process)[-1] for process in [start(1, command), start(1, command)]]
    return {key: max(value, second[key]) for key, value in first.items()}


def table(header, rows):
    print("| " + " | ".join(header) + " |")
    print("|" + "---|" * len(header))
    for row in rows:
        print("| " + " | ".join(str(cell) for cell in row) + " |")
    print()


def studies(program, cells):
    return {
        "1 rank": (1, [program, "run", str(cells)]),
        "2 ranks, boxes": (2, [program, "run", str(cells)]),
        "2 ranks, METIS": (2, [program, "run", str(cells), "metis"]),
        HALF: (1, [program, "run", str(cells / 2)]),
    }


def measure_runs(program, cells, repeat):
    runs = {name: [] for name in [*studies(program, cells), APART]}
    for _ in range(repeat):
        for name, (ranks, command) in studies(program, cells).items():
            runs[name] += lines(ranks, command)
            print(json.dumps({"study": name, **runs[name][-1]}), flush=True)
        runs[APART].append(apart(studies(program, cells)[HALF][1]))
        print(json.dumps({"study": APART, **runs[APART][-1]}), flush=True)
    print()
    return runs


def show_runs(runs):
    def median(name, value):
        return statistics.median(value(run) for run in runs[name])

    def clock(run):
        return sum(run[step] for step in STEPS)

    rows = []
    for name, results in runs.items():
        last = results[-1]
        rows.append((name, last["cells"], f"{median(name, clock):.2f}",
                     f"{min(map(clock, results)):.2f} to {max(map(clock, results)):.2f}",
                     f"{median(name, lambda run: run['work']):.2f}",
                     f"{median(name, lambda run: run['exchanging']):.2f}",
                     last["exchanges"], last["messages"], last["bytes"],
                     f"{median(name, lambda run: run['megabytes']):.0f}"))
    table(("run", "cells", "clock, s", "spread, s", "work, s", "exchanging, s", "exchanges",
           "messages", "bytes", "MB a rank"), rows)
    for what, value in (("clock", clock), ("work", lambda run: run["work"])):
        for title, first, second in (("Strong scaling", "1 rank", "2 ranks, boxes"),
                                     ("Strong scaling", "1 rank", "2 ranks, METIS"),
                                     ("At best", "1 rank", APART),
                                     ("Weak scaling", HALF, "2 ranks, boxes")):
            pairs = [value(a) / value(b) for a, b in zip(runs[first], runs[second])]
            print(f"{title}, {what}, {second}: {statistics.median(pairs):.2f} "
                  f"({min(pairs):.2f} to {max(pairs):.2f})")
    print()


def show_exchange(program, repeat):
    sizes = {}
    for _ in range(repeat):
        for line in lines(2, [program, "exchange"]):
            sizes.setdefault(line["bytes"], []).append(line["microseconds"])
    best = {size: min(values) for size, values in sizes.items()}
    table(("bytes", "best, us", "median, us"),
          [(size, f"{best[size]:.1f}", f"{statistics.median(values):.1f}")
           for size, values in sizes.items()])


def show_cut(program, cells):
    rows = []
    for line in lines(1, [program, "cut", str(cells)]):
        area = (line["cells"] / line["parts"]) ** (2.0 / 3.0)
        rows.append((line["parts"], f"{line['seconds']:.0f}", line["largestPart"],
                     f"{line['meanFaces']:.0f}", line["mostFaces"],
                     f"{line['meanFaces'] / area:.2f}", f"{line['mostFaces'] / area:.2f}",
                     f"{line['meanNeighbours']:.1f}", line["mostNeighbours"]))
    table(("parts", "s", "largest part", "faces, mean", "faces, most", "mean / n^(2/3)",
           "most / n^(2/3)", "neighbours, mean", "neighbours, most"), rows)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program")
    parser.add_argument("--cells", type=float, default=1e6)
    parser.add_argument("--repeat", type=int, default=5)
    parser.add_argument("--cut-cells", type=float, default=1e7)
    options = parser.parse_args()
    show_runs(measure_runs(options.program, options.cells, options.repeat))
    show_exchange(options.program, options.repeat)
    if options.cut_cells > 0:
        show_cut(options.program, options.cut_cells)


if __name__ == "__main__":
    main()
