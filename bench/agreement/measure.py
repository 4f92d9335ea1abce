#!/usr/bin/env python3
"""measure.py --forms PROGRAM --program WELDLINE CASE...

Runs filling results from every form of input on 1, 2, 3, 4 and 8 processes, compares each result with
that of one process on the case itself, node by node, and prints a table. Ends with 1 where a weld
node was lost or gained, or an angle moved by more than 2e-6 degrees.
"""

import argparse
import json
import os
import pathlib
import subprocess
import sys
import tempfile

import numpy
from vtkmodules.util.numpy_support import vtk_to_numpy
from vtkmodules.vtkIOXML import vtkXMLUnstructuredGridReader

FORMS = ["whole.vtu", "pieces.pvtu", "ghosts.pvtu", "blocks.vtm", "case/case.foam",
         "decomposed/decomposed.foam"]
RANKS = [1, 2, 3, 4, 8]
PIECES = 5
LARGEST_MOVE = 2e-6


def run(program, ranks, case, folder):
    """Angles at the nodes, in an order that depends on their places alone, and the summary."""
    result, summary = folder / "result.vtu", folder / "summary.json"
    launcher = ["mpirun", "-n", str(ranks)] if ranks > 0 else []
    subprocess.run([*launcher, program, "analyze", case, "-o", result, "--json", summary],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    reader = vtkXMLUnstructuredGridReader()
    reader.SetFileName(str(result))
    reader.Update()
    grid = reader.GetOutput()
    places = vtk_to_numpy(grid.GetPoints().GetData())
    order = numpy.lexsort(places.T)
    angles = vtk_to_numpy(grid.GetPointData().GetArray("MeetingAngle"))
    return places[order], angles[order], json.loads(summary.read_text())


def shape(summary):
    return [(line["id"], line["nodes"]) for line in summary["components"]]


def compare(reference, other):
    """Weld nodes lost and gained, largest move of an angle, and whether the lines are the same."""
    places, angles, summary = reference
    other_places, other_angles, other_summary = other
    assert numpy.array_equal(places, other_places), "the points differ"
    weld, other_weld = angles < 180.0, other_angles < 180.0
    both = weld & other_weld
    move = numpy.abs(angles - other_angles)[both].max(initial=0.0)
    return (int((weld & ~other_weld).sum()), int((other_weld & ~weld).sum()), float(move),
            shape(summary) == shape(other_summary))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--forms", type=pathlib.Path, required=True)
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("cases", nargs="+", type=pathlib.Path)
    options = parser.parse_args()
    os.environ.update(OMPI_ALLOW_RUN_AS_ROOT="1", OMPI_ALLOW_RUN_AS_ROOT_CONFIRM="1",
                      OMPI_MCA_rmaps_base_oversubscribe="1", OMPI_MCA_mpi_yield_when_idle="1",
                      OMPI_MCA_hwloc_base_binding_policy="none")
    isAgreed = True
    print("| filling result | weld nodes | lines | form | ranks | lost, gained | largest move, degrees "
          "| lines the same |\n|---|---|---|---|---|---|---|---|")
    for case in options.cases:
        with tempfile.TemporaryDirectory(prefix="weldline-agreement-") as name:
            folder = pathlib.Path(name)
            subprocess.run([options.forms, case, folder, str(PIECES)], check=True)
            reference = run(options.program, 0, case, folder)
            nodes = int((reference[1] < 180.0).sum())
            for form in FORMS:
                found = [compare(reference, run(options.program, ranks, folder / form, folder))
                         for ranks in RANKS]
                lost, gained = max(f[0] for f in found), max(f[1] for f in found)
                move, same = max(f[2] for f in found), all(f[3] for f in found)
                isAgreed = isAgreed and lost == gained == 0 and move <= LARGEST_MOVE and same
                print(f"| {case.stem} | {nodes:,} | {len(reference[2]['components'])} | {form} | "
                      f"{', '.join(map(str, RANKS))} | {lost}, {gained} | {move:.1e} | "
                      f"{'yes' if same else 'no'} |", flush=True)
    sys.exit(0 if isAgreed else 1)


main()
