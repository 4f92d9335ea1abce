"""Runs the test programs against one built library, the likeliest to notice first."""

import os
import shutil
import subprocess

CPU_SECONDS = 10
MEMORY_BYTES = 3 << 30
FILE_BYTES = 1 << 28

# Per folder of src/ the program whose tests are about it; the others follow in the order below.
OWN_PROGRAM = {"angle": "angle", "gradient": "gradient", "topology": "topology"}
PROGRAMS = ("core", "sequence", "topology", "gradient", "angle", "reference")
REFERENCE_FIRST = "HandWorked*:*/0"
REFERENCE_MORE = "*/1"


class Programs:
    """The test programs of one build folder."""

    def __init__(self, build, is_sanitized):
        self._folder = build / "tests" / "mutation"
        self._is_sanitized = is_sanitized

    def paths(self):
        """The executables by name, for whoever wants to know whether they have changed."""
        return {name: self._folder / f"mutation_test_{name}" for name in PROGRAMS}

    def killer(self, file, library_folder, scratch, passed_by=frozenset()):
        """Which program notices what is wrong with the library, and how; None if none does. Those
        that have passed it already are not asked again."""
        own = _own_program(file)
        stages = [(name, "*") for name in PROGRAMS if name not in (own, "reference")]
        stages += [("reference", REFERENCE_FIRST), ("reference", REFERENCE_MORE)]
        for name, cases in [(own, "*"), *stages]:
            if name in passed_by:
                continue
            how = self._run(name, cases, library_folder, scratch)
            if how is not None:
                return f"{name} {how}"
        return None

    def first_killer(self, file, library_folder, scratch):
        """The same with the one program that is about the file."""
        own = _own_program(file)
        how = self._run(own, "*", library_folder, scratch)
        return how and f"{own} {how}"

    def _run(self, name, cases, library_folder, scratch):
        """Why the program failed, or None when it passed."""
        shutil.rmtree(scratch, ignore_errors=True)
        scratch.mkdir(parents=True)
        environment = dict(
            os.environ, LD_LIBRARY_PATH=str(library_folder), TMPDIR=str(scratch), LC_ALL="C"
        )
        arguments = [f"--gtest_filter={cases}", "--gtest_fail_fast", "--gtest_brief=1"]
        try:
            result = subprocess.run(
                [*self._limits(), str(self._folder / f"mutation_test_{name}"), *arguments],
                cwd=scratch,
                env=environment,
                stdin=subprocess.DEVNULL,
                capture_output=True,
                timeout=20 * CPU_SECONDS,
            )
        except subprocess.TimeoutExpired:
            return "hangs"
        if result.returncode == 0:
            if b"\n[==========] 0 tests" in result.stdout:
                raise SystemExit(f"mutate: {name} has no test like {cases}")
            return None
        if result.returncode < 0:
            return "hangs" if -result.returncode in (9, 24) else "crashes"
        output = result.stdout.decode(errors="replace")
        failed = [line for line in output.splitlines() if line.startswith("[  FAILED  ]")]
        if failed:
            return failed[0].removeprefix("[  FAILED  ]").split(",")[0].split("(")[0].strip()
        return "a sanitizer" if b"Sanitizer" in result.stderr else "ends early"

    def _limits(self):
        """The command that confines the program: endless loops and growth must end."""
        limits = ["prlimit", f"--cpu={CPU_SECONDS}", "--core=0", f"--fsize={FILE_BYTES}"]
        if not self._is_sanitized:  # the sanitizer reserves far more than it uses
            limits.append(f"--as={MEMORY_BYTES}")
        return limits


def _own_program(file):
    return OWN_PROGRAM.get(file.split("/")[0], "core")
