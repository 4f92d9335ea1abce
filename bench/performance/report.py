"""Turns what measure.py measured into the tables of docs/performance.md."""

import re
import statistics

AT_LEAST, AT_MOST = "at least", "at most"

# Work, what it is compared with, kind and size of the goal, and the two stages whose times are
# divided.
GOALS = [
    ("whole calculation", "plain transcription", AT_LEAST, 5, "whole/naive", "whole/library"),
    ("whole calculation", "NumPy and SciPy", AT_LEAST, 4, "whole/vectorised", "whole/library"),
    ("smoothing pass", "sparse product on the same graph", AT_MOST, 1.1,
     "smoothing pass/library", "smoothing pass/csr"),
    ("the same, three components together", "sparse product on the same graph", AT_MOST, 1.1,
     "smoothing pass in a set/library", "smoothing pass/csr"),
    ("upwind gradient", "vtkGradientFilter", AT_LEAST, 15,
     "gradient filter/vtk", "upwind gradient/library"),
    ("least-squares gradient", "vtkGradientFilter", AT_LEAST, 8,
     "gradient filter/vtk", "least-squares gradient/library"),
    ("default gradient, per iteration", "vtkGradientFilter", AT_LEAST, 12,
     "gradient filter/vtk", "default gradient iteration/library"),
    ("RBF gradient without its stencils", "vtkGradientFilter", AT_LEAST, 5,
     "gradient filter/vtk", "RBF gradient/library"),
    ("method 1", "plain transcription", AT_LEAST, 6, "method 1/naive", "method 1/library"),
    ("method 2", "plain transcription", AT_LEAST, 6, "method 2/naive", "method 2/library"),
    ("method 3", "plain transcription", AT_LEAST, 4, "method 3/naive", "method 3/library"),
    ("method 4", "plain transcription", AT_LEAST, 6, "method 4/naive", "method 4/library"),
    ("connectivity", "plain transcription", AT_LEAST, 3,
     "connectivity/naive", "connectivity/library"),
    ("binding", "plain transcription", AT_LEAST, 3, "binding/naive", "binding/library"),
    ("finite-volume mesh", "vtkDataSetSurfaceFilter", AT_MOST, 1,
     "finite-volume mesh/weldline", "surface filter/vtk"),
    ("whole program, .vtu in and out", "VTK reading and writing the file", AT_MOST, 2.5,
     "program/weldline", "program/vtk"),
]
MICROSECONDS_PER_STENCIL = 3.0
BYTES_PER_CELL = 450
LARGE = "8 million hexahedra"
LARGE_COST = 1.15
LARGE_PEAK = 12e9


def ratios(entry, over, under):
    pairs = zip(entry["times"].get(over, []), entry["times"].get(under, []))
    return [a / b for a, b in pairs]


def holds(kind, limit, value):
    return value >= limit if kind == AT_LEAST else value <= limit


def judged(values, kind, limit):
    """Median and spread; a missed goal is marked."""
    if not values:
        return "-"
    middle = statistics.median(values)
    text = f"{middle:.3g}"
    if len(values) > 1:
        text += f" ({min(values):.3g} to {max(values):.3g})"
    return text if holds(kind, limit, middle) else text + " **missed**"


def markdown(head, rows):
    lines = [head, ["---"] * len(head), *rows]
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)


def small(results):
    return {name: mesh for name, mesh in results["meshes"].items() if name != LARGE}


def goal_table(results):
    meshes = small(results)
    rows = []
    for work, against, kind, limit, over, under in GOALS:
        cells = [judged(ratios(m, over, under), kind, limit) for m in meshes.values()]
        unit = "times as fast" if kind == AT_LEAST else "times its time"
        rows.append([work, against, f"{kind} {limit:g} {unit}", *cells])
    rows.append(["stencil and weights of a face", "", f"at most {MICROSECONDS_PER_STENCIL:g} µs",
                 *[judged([1e3 * t for t in m["times"]["stencils per face/weldline"]], AT_MOST,
                          MICROSECONDS_PER_STENCIL) for m in meshes.values()]])
    rows.append(["memory of the library", "", f"at most {BYTES_PER_CELL} bytes a cell",
                 *[judged([m["memory"]["peak"]], AT_MOST, BYTES_PER_CELL)
                   for m in meshes.values()]])
    return markdown(["work", "against", "goal", *meshes], rows)


def time_table(results):
    meshes = small(results)
    stages = sorted({stage for m in meshes.values() for stage in m["times"]})
    rows = []
    for stage in stages:
        times = [m["times"].get(stage, []) for m in meshes.values()]
        rows.append([stage.replace("/", ": "),
                     *[f"{statistics.median(t):.4g}" if t else "-" for t in times]])
    counts = ["cells", *[f"{m['cells']:,}" for m in meshes.values()]]
    rounds = ["rounds", *[str(m["rounds"]) for m in meshes.values()]]
    return markdown(["ms", *meshes], [counts, rounds, *rows])


def bandwidth_table(results):
    rows = []
    for name, m in results["meshes"].items():
        triad_time = statistics.median(m["times"]["triad per million/triad"])
        triad = m["bytes"]["triad per million/triad"] / triad_time
        moved = m["bytes"]["smoothing pass/csr"]
        speeds = [moved / statistics.median(m["times"][f"smoothing pass/{who}"])
                  for who in ("library", "csr")]
        rows.append([name, f"{moved / m['cells']:.0f}", f"{1e-6 * triad:.1f}",
                     *[f"{1e-6 * s:.1f} ({100 * s / triad:.0f} %)" for s in speeds]])
    return markdown(["mesh", "bytes of a product per cell", "triad, GB/s",
                     "smoothing pass, GB/s", "sparse product, GB/s"], rows)


def memory_table(results):
    meshes = results["meshes"]
    arrays = list(next(iter(meshes.values()))["memory"]["arrays"])
    rows = []
    for array in arrays:
        pairs = [m["memory"]["arrays"][array] for m in meshes.values()]
        rows.append([array, *[f"{touched:.0f} of {given:.0f}" for given, touched in pairs]])
    rows.append(["most at any time, scratch included",
                 *[f"{m['memory']['peak']:.0f}" for m in meshes.values()]])
    return markdown(["bytes per cell, touched of allocated", *meshes], rows)


def large_table(results):
    meshes = results["meshes"]
    if LARGE not in meshes:
        return None
    large, one = meshes[LARGE], meshes["hexahedra"]
    rows = []
    for stage in ("whole/library", "smoothing pass/library", "method 4/library",
                  "connectivity/library", "binding/library"):
        cost = [statistics.median(m["times"][stage]) / m["cells"] for m in (one, large)]
        rows.append([stage.split("/")[0], f"{1e6 * cost[0]:.3g}", f"{1e6 * cost[1]:.3g}",
                     judged([cost[1] / cost[0]], AT_MOST, LARGE_COST)])
    peak = large["program_peak"]
    rows.append(["whole program: peak memory, GB", f"{1e-9 * one['program_peak']:.2f}",
                 f"{1e-9 * peak:.2f}",
                 "under 12" if peak < LARGE_PEAK else "under 12 **missed**"])
    return markdown(["ns per cell", "1 million", "8 million", "8 million against 1 million"], rows)


def setting(results):
    m = results["machine"]
    return (f"{m['processor']}, {m['cores']} cores of which one is used; "
            f"{m['compiler']}, -O3; "
            f"{'large' if m['large_pages'] else 'small'} pages under large arrays.")


def tables(results):
    """Markdown by name of the table."""
    made = {"setting": setting(results), "goals": goal_table(results),
            "times": time_table(results), "bandwidth": bandwidth_table(results),
            "memory": memory_table(results), "large": large_table(results)}
    return {name: table for name, table in made.items() if table}


def renew(document, tables_by_name):
    """Replaces what stands between "<!-- table NAME -->" and "<!-- end table -->"."""
    text = document.read_text()
    for name, table in tables_by_name.items():
        pattern = rf"(<!-- table {name} -->\n).*?(<!-- end table -->)"
        text, count = re.subn(pattern, lambda m, t=table: f"{m[1]}\n{t}\n\n{m[2]}", text,
                              flags=re.DOTALL)
        if count != 1:
            raise SystemExit(f"report.py: {document} has no place for table '{name}'")
    document.write_text(text)
