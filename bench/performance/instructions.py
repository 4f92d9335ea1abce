#!/usr/bin/env python3
"""Counts the instructions of every stage on a small mesh and compares them with those kept.

    instructions.py --program FILE --history FOLDER --version VERSION [--keep]

FILE is weldline_instructions. FOLDER holds one file of counts per release; the counts are compared
with the newest of them. --keep writes the file of VERSION. Counts need no quiet machine, but depend
on the compiler: those of another compiler are not compared. Exit code 1 when a stage takes more
than 3 % more instructions than kept.
"""

import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile

MESHES = {"hexahedra": ["hexahedra", "12"], "tetrahedra": ["tetrahedra", "7"],
          "shuffled hexahedra": ["hexahedra", "12", "shuffled"]}
TOLERANCE = 1.03


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--history", type=pathlib.Path, required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--keep", action="store_true")
    return parser.parse_args()


def count(program, mesh):
    """Instructions by stage; callgrind leaves a file per stage."""
    counts = {}
    with tempfile.TemporaryDirectory(prefix="weldline-instructions-") as folder:
        command = ["valgrind", "--tool=callgrind", "--quiet",
                   f"--callgrind-out-file={folder}/counts", str(program), *mesh]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        for file in pathlib.Path(folder).iterdir():
            text = file.read_text()
            stage = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.MULTILINE)
            if stage:
                counts[stage[1]] = int(re.search(r"^summary: (\d+)", text, re.MULTILINE)[1])
    return dict(sorted(counts.items()))


def compiler():
    version = subprocess.run(["c++", "--version"], check=True, capture_output=True, text=True)
    return version.stdout.splitlines()[0]


def newest(history):
    """The counts of the latest release, by the numbers in its name; None where there are none."""
    files = sorted(history.glob("*.json"),
                   key=lambda file: [int(n) for n in re.findall(r"\d+", file.stem)])
    return (files[-1].stem, json.loads(files[-1].read_text())) if files else (None, None)


def compare(release, kept, now):
    """Prints all stages; answers those that became slower."""
    slower = []
    print(f"{'instructions':52} {release or '':>14} {'now':>14}")
    for mesh, stages in now["meshes"].items():
        for stage, after in stages.items():
            before = kept["meshes"].get(mesh, {}).get(stage) if kept else None
            change = f"{100 * (after / before - 1):+7.1f} %" if before else ""
            print(f"{mesh + ', ' + stage:52} {before or '-':>14} {after:>14} {change}")
            if before and after > TOLERANCE * before:
                slower.append(f"{mesh}, {stage}")
    return slower


def main():
    options = arguments()
    now = {"compiler": compiler(),
           "meshes": {name: count(options.program, mesh) for name, mesh in MESHES.items()}}
    release, kept = newest(options.history)
    if kept and kept["compiler"] != now["compiler"]:
        print(f"{release} was counted with {kept['compiler']} and is not compared")
        release, kept = None, None
    slower = compare(release, kept, now)
    if options.keep:
        file = options.history / f"{options.version}.json"
        file.write_text(json.dumps(now, indent=1) + "\n")
    if slower:
        sys.exit("instructions.py: slower by more than 3 %: " + "; ".join(slower))


if __name__ == "__main__":
    main()
