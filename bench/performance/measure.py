#!/usr/bin/env python3
"""Measures everything side by side and writes docs/performance.md and docs/performance.json.

    measure.py --programs FOLDER --program FILE [--quick] [--large] [--rounds N]
               [--repetitions N] [--without-vectorised] [--go-on] [--json FILE] [--document FILE]

FOLDER holds the measuring programs, FILE is the weldline program. In every round each piece of work
is done next to what it is compared with, in random order; ratios are formed within a round. --quick
takes tiny meshes and one round, to see that everything runs; --large adds 8 million hexahedra;
--go-on keeps the meshes that the file of --json holds already and measures the others.
"""

import argparse
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys
import tempfile

import report

HERE = pathlib.Path(__file__).resolve().parent
# Large pages for everybody's large arrays, as NumPy has them by itself; GLIBC_TUNABLES= in the
# environment leaves the others without.
TUNABLES = "GLIBC_TUNABLES"
LARGE_STAGES = "^(whole|binding|connectivity|method 4)/library|^smoothing pass/library|csr|triad"


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--programs", type=pathlib.Path, required=True)
    parser.add_argument("--program", type=pathlib.Path, required=True)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--large", action="store_true")
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--repetitions", type=int, default=3)
    parser.add_argument("--without-vectorised", action="store_true")
    parser.add_argument("--go-on", action="store_true")
    parser.add_argument("--json", type=pathlib.Path)
    parser.add_argument("--document", type=pathlib.Path)
    return parser.parse_args()


def run(command, **options):
    """Processor seconds and peak memory in bytes of a command that must succeed."""
    process = subprocess.Popen([str(word) for word in command], **options)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"measure.py: {command[0]} ended with {process.returncode}")
    return usage.ru_utime + usage.ru_stime, 1024 * usage.ru_maxrss


class Bench:
    """One run of all measurements; everything intermediate lies in a folder of its own."""

    def __init__(self, options, folder):
        self.options = options
        self.folder = folder
        self.rounds = 1 if options.quick else options.rounds
        self.results = {"machine": machine(), "meshes": {}}
        if options.go_on and options.json and options.json.exists():
            self.results = json.loads(options.json.read_text())

    def tool(self, name):
        return self.options.programs / name

    def meshes(self):
        hexahedra, tetrahedra = (20, 12) if self.options.quick else (100, 55)
        return {
            "hexahedra": ["hexahedra", hexahedra],
            "tetrahedra": ["tetrahedra", tetrahedra],
            "shuffled hexahedra": ["hexahedra", hexahedra, "shuffled"],
        }

    def stages(self, program, mesh, stages=".", repetitions=None):
        """Milliseconds per part of each stage, the median of the repetitions."""
        repetitions = repetitions or (1 if self.options.quick else self.options.repetitions)
        out = self.folder / "stages.json"
        run([self.tool(program), *mesh, f"--benchmark_filter={stages}",
             f"--benchmark_repetitions={repetitions}",
             "--benchmark_enable_random_interleaving=true", "--benchmark_out_format=json",
             f"--benchmark_out={out}"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        answer = json.loads(out.read_text())
        times, moved = {}, {}
        for entry in answer["benchmarks"]:
            if entry["run_type"] == "iteration":
                name = entry["name"].split("/iterations")[0]
                times.setdefault(name, []).append(entry["cpu_time"] / entry["parts"])
                if "bytes" in entry:
                    moved[name] = entry["bytes"]
        context = {key: int(answer["context"][key]) for key in ("cells", "inner_faces", "nodes")}
        return {name: statistics.median(t) for name, t in times.items()}, moved, context

    def vectorised(self, arrays):
        script = ["/usr/bin/python3", HERE / "vectorised.py", arrays]
        return float(subprocess.run(script, check=True, capture_output=True, text=True).stdout)

    def program_and_vtk(self, case):
        """Milliseconds of the program and of VTK's reading and writing alone; peak memory."""
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        result = self.folder / "result.vtu"
        program, peak = run([self.options.program, "analyze", case, "-o", result], **quiet)
        vtk, _ = run([self.tool("weldline_read_and_write"), case, result], **quiet)
        return {"program/weldline": 1e3 * program, "program/vtk": 1e3 * vtk}, peak

    def measure_mesh(self, name, mesh):
        case, arrays = self.folder / "case.vtu", self.folder / "arrays"
        arrays.mkdir(exist_ok=True)
        run([self.tool("weldline_write_case"), case, *mesh])
        if not self.options.without_vectorised:
            run([self.tool("weldline_write_arrays"), arrays, *mesh])
        entry = {"rounds": self.rounds, "times": {}, "bytes": {}}
        for _ in range(self.rounds):
            times, entry["bytes"], context = self.stages("weldline_performance", mesh)
            times.update(self.stages("weldline_host_performance", mesh)[0])
            if not self.options.without_vectorised:
                times["whole/vectorised"] = self.vectorised(arrays)
            program, entry["program_peak"] = self.program_and_vtk(case)
            times.update(program)
            entry.update(context)
            keep(entry, times)
        entry["memory"] = self.memory(mesh)
        self.add(name, entry)

    def measure_large(self):
        mesh, case = ["hexahedra", 24 if self.options.quick else 200], self.folder / "case.vtu"
        entry = {"rounds": self.rounds, "times": {}}
        for _ in range(self.rounds):
            times, entry["bytes"], context = self.stages("weldline_performance", mesh,
                                                         LARGE_STAGES, 1)
            entry.update(context)
            keep(entry, times)
        entry["memory"] = self.memory(mesh)
        run([self.tool("weldline_write_case"), case, *mesh])
        program, entry["program_peak"] = self.program_and_vtk(case)
        keep(entry, program)
        self.add(report.LARGE, entry)

    # What is done is kept at once: a whole measurement takes long.
    def add(self, name, entry):
        self.results["meshes"][name] = entry
        if self.options.json:
            self.options.json.write_text(json.dumps(self.results, indent=1) + "\n")

    def memory(self, mesh):
        command = [str(word) for word in [self.tool("weldline_memory"), *mesh]]
        # A touched large page holds what nobody has touched.
        small = {key: value for key, value in os.environ.items() if key != TUNABLES}
        return json.loads(subprocess.run(command, check=True, capture_output=True,
                                         env=small).stdout)

    def measure(self):
        for name, mesh in self.meshes().items():
            if name in self.results["meshes"]:
                continue
            print(f"measuring {name}", file=sys.stderr, flush=True)
            self.measure_mesh(name, mesh)
        if self.options.large and report.LARGE not in self.results["meshes"]:
            print(f"measuring {report.LARGE}", file=sys.stderr, flush=True)
            self.measure_large()
        return self.results


def keep(entry, times):
    for stage, time in times.items():
        entry["times"].setdefault(stage, []).append(time)


def machine():
    names = [line.split(":")[1].strip()
             for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines()
             if line.startswith("model name")]
    compiler = subprocess.run(["c++", "--version"], check=True, capture_output=True, text=True)
    return {"processor": names[0] if names else platform.processor(), "cores": len(names),
            "compiler": compiler.stdout.splitlines()[0],
            "large_pages": "hugetlb" in os.environ.get(TUNABLES, "")}


def main():
    options = arguments()
    os.environ.setdefault(TUNABLES, "glibc.malloc.hugetlb=1")
    os.environ.update(OMPI_ALLOW_RUN_AS_ROOT="1", OMPI_ALLOW_RUN_AS_ROOT_CONFIRM="1",
                      VTK_SMP_BACKEND_IN_USE="Sequential")
    with tempfile.TemporaryDirectory(prefix="weldline-performance-") as folder:
        results = Bench(options, pathlib.Path(folder)).measure()
    tables = report.tables(results)
    if options.document:
        report.renew(options.document, tables)
    else:
        print("\n\n".join(tables.values()))


if __name__ == "__main__":
    main()
