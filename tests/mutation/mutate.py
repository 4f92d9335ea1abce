"""Mutation testing of the library: see scripts/mutate and docs/mutation.md.

Every mutant is one change in one file of src/. It is built in a copy, and the tests run on it.
A mutant that no test notices is a survivor; survivors.toml explains those that none can notice.
"""

import argparse
import fnmatch
import pathlib
import queue
import random
import shutil
import subprocess
import sys
import tempfile
import threading

import results
import survivors
from library import Library
from mutants import all_mutants
from programs import Programs
from table import Table

ROOT = pathlib.Path(__file__).resolve().parents[2]
REASONS = pathlib.Path(__file__).with_name("survivors.toml")
IN_MEMORY = "/dev/shm" if pathlib.Path("/dev/shm").is_dir() else None  # the tests write many files
DOCUMENT = ROOT / "docs" / "mutation.md"


def read_arguments(words):
    """The command line; wrong usage ends the process with status 2."""

    def folder(text):
        return pathlib.Path(text).resolve()

    parser = argparse.ArgumentParser(prog="mutate", description=__doc__)
    parser.add_argument("--file", metavar="GLOB", help="only files of src/ like this")
    parser.add_argument("--changed", metavar="REVISION", help="only files changed since then")
    parser.add_argument("--sample", type=int, metavar="N", help="only N mutants, drawn at random")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="of the sample")
    parser.add_argument("--jobs", "-j", type=int, default=1, metavar="N", help="at a time")
    parser.add_argument("--list", action="store_true", help="print the mutants, run nothing")
    parser.add_argument("--check", action="store_true", help="check the explanations, run nothing")
    parser.add_argument("--document", action="store_true", help="renew the lists in the document")
    parser.add_argument("--build", type=folder, help="build folder with mutation_programs")
    parser.add_argument("--sanitized", type=folder, help="the same with sanitizers on")
    parser.add_argument("--work", type=folder, help="folder for copies and results")
    arguments = parser.parse_args(words)
    runs = not (arguments.list or arguments.check or arguments.document)
    if runs and not (arguments.build and arguments.work):
        parser.error("a run needs --build and --work")
    if arguments.jobs < 1 or (arguments.sample is not None and arguments.sample < 1):
        parser.error("--jobs and --sample take numbers from 1 on")
    return arguments


def chosen(mutants, arguments):
    """The mutants that the command line asks for."""
    if arguments.file:
        mutants = [m for m in mutants if fnmatch.fnmatch(m.file, arguments.file)]
    if arguments.changed:
        named = subprocess.run(
            ["git", "diff", "--name-only", arguments.changed, "--", "src"],
            cwd=ROOT,
            capture_output=True,
            text=True,
        )
        if named.returncode != 0:
            print(f"mutate: {named.stderr.strip()}", file=sys.stderr)
            raise SystemExit(2)
        mutants = [m for m in mutants if f"src/{m.file}" in named.stdout.splitlines()]
    if arguments.sample:
        draw = random.Random(arguments.seed)
        mutants = draw.sample(mutants, min(arguments.sample, len(mutants)))
    return mutants


class Stage:
    """One build of library and test programs, tried by several workers at a time."""

    def __init__(self, name, build, work, sources, is_sanitized):
        self._build = build
        self._sources = sources
        self._work = work / name
        self._programs = Programs(build, is_sanitized)
        tests = {name: results.digest([path]) for name, path in self._programs.paths().items()}
        self.known = results.Results(self._work / "results.jsonl", sources, tests)

    def run(self, mutants, jobs, report):
        """Tries the mutants that have no outcome yet; report(mutant, outcome, detail) for all."""
        waiting = queue.SimpleQueue()
        for mutant in mutants:
            outcome = self.known.outcome(mutant)
            if outcome is None:
                waiting.put(mutant)
            else:
                report(mutant, *outcome)
        if waiting.empty():
            return
        lock = threading.Lock()
        failures = []
        first = self._library(0)

        def work(number):
            try:
                library = first if number == 0 else self._library(number, first.original)
                with tempfile.TemporaryDirectory(dir=IN_MEMORY) as scratch:
                    self._try_all(waiting, library, pathlib.Path(scratch) / "cwd", lock, report)
            except BaseException as failure:  # handed on to the main thread
                failures.append(failure)

        workers = [threading.Thread(target=work, args=(i,), daemon=True) for i in range(jobs)]
        for worker in workers:
            worker.start()
        for worker in workers:
            worker.join()
        if failures:
            raise failures[0]

    def _library(self, number, original=None):
        work = self._work / f"worker{number}"
        return Library(self._build, ROOT / "src", self._sources, work, original)

    def _try_all(self, waiting, library, scratch, lock, report):
        library.build()
        killer = self._programs.killer("core", library.folder, scratch)
        if killer is not None:
            raise SystemExit(f"mutate: the tests fail without any mutant: {killer}")
        while True:
            try:
                mutant = waiting.get_nowait()
            except queue.Empty:
                return
            text = (self._sources / mutant.file).read_text()
            outcome, detail = library.build(
                mutant.file,
                mutant.apply(text),
                lambda source: self._programs.first_killer(source, library.folder, scratch),
            )
            if outcome == "built":
                passed = self.known.passed_by(mutant)
                detail = self._programs.killer(mutant.file, library.folder, scratch, passed)
                outcome = results.KILLED if detail else results.SURVIVED
            elif outcome == "noticed":
                outcome = results.KILLED
            with lock:
                self.known.keep(mutant, outcome, detail or "")
                report(mutant, outcome, detail or "")


class Run:
    """One run over the chosen mutants and what it found."""

    def __init__(self, arguments, sources, mutants):
        self._arguments = arguments
        self._sources = sources
        self._mutants = mutants
        self._explanations = survivors.Explanations(survivors.read_reasons(REASONS))
        self._outcomes = {}
        self.table = Table()
        self.unexplained = []
        self.obsolete = []

    def go(self):
        """Plain build first; what survives it without an explanation, under the sanitizers where
        there is such a build."""
        a = self._arguments
        plain = Stage("plain", a.build, a.work, self._sources, is_sanitized=False)
        plain.run(self._mutants, a.jobs, self._note)
        if a.sanitized:
            left = [
                m
                for m in self._mutants
                if self._outcomes[m.id] == results.SURVIVED and not self._explanations.explains(m)
            ]
            sanitized = Stage("sanitized", a.sanitized, a.work, self._sources, is_sanitized=True)
            sanitized.run(left, a.jobs, self._note)
        for mutant in self._mutants:
            self._judge(mutant, self._outcomes[mutant.id])

    def _note(self, mutant, outcome, detail):
        self._outcomes[mutant.id] = outcome
        if outcome == results.SURVIVED and not self._is_expected(mutant):
            print(f"survived  {mutant.in_words()}", flush=True)

    def _is_expected(self, mutant):
        return self._explanations.explains(mutant) or (
            self._explanations.leaves_to_sanitizers(mutant) and not self._arguments.sanitized
        )

    def _judge(self, mutant, outcome):
        expected = self._is_expected(mutant)
        self.table.add(mutant, outcome, expected)
        if outcome == results.SURVIVED and not expected:
            self.unexplained.append(mutant)
        elif outcome != results.SURVIVED and self._explanations.explains(mutant):
            self.obsolete.append(mutant)

    def print_report(self):
        """The table, then what a person has to look at."""
        print(self.table.as_markdown())
        print(f"{self.table.share_killed():.2f} % of the mutants that differ are killed")
        for mutant in self.unexplained:
            print(f"UNEXPLAINED  {mutant.in_words()}\n             {mutant.id}")
        for mutant in self.obsolete:
            print(f"explained, yet killed  {mutant.in_words()}\n             {mutant.id}")


def check(mutants):
    """Do explanations and document fit the sources? Prints what does not; answers the exit code."""
    reasons = survivors.read_reasons(REASONS)
    missing = survivors.Explanations(reasons).without_mutant(mutants)
    for id in missing:
        print(f"mutate: an explanation without a mutant: {id}")
    if missing:
        return 1
    if survivors.section_of(DOCUMENT.read_text()) != survivors.render(reasons, mutants):
        print("mutate: docs/mutation.md lags behind; run scripts/mutate --document")
        return 1
    return 0


def document(mutants):
    """Renews the lists in docs/mutation.md."""
    section = survivors.render(survivors.read_reasons(REASONS), mutants)
    DOCUMENT.write_text(survivors.replace_section(DOCUMENT.read_text(), section))
    return 0


def main(words):
    """Exit codes: 0 no unexplained survivor, 1 some, 2 wrong usage."""
    arguments = read_arguments(words)
    if arguments.work:  # one state of the sources for the whole run
        sources = arguments.work / "src"
        shutil.rmtree(sources, ignore_errors=True)
        shutil.copytree(ROOT / "src", sources)
    else:
        sources = ROOT / "src"
    mutants = all_mutants(sources)
    if arguments.check:
        return check(mutants)
    if arguments.document:
        return document(mutants)
    wanted = chosen(mutants, arguments)
    if arguments.list:
        for mutant in wanted:
            print(f"{mutant.id}  {mutant.in_words()}")
        return 0
    run = Run(arguments, sources, wanted)
    run.go()
    run.print_report()
    return 1 if run.unexplained else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
