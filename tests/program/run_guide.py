"""run_guide.py PROGRAM GUIDE CASE: its commands work as they stand, on a folder `plate`."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


def main():
    program, guide, case = (pathlib.Path(name).resolve() for name in sys.argv[1:])
    commands = [line.strip() for line in guide.read_text().splitlines()
                if line.startswith("    weldline ")]
    assert len(commands) == 5, commands
    with tempfile.TemporaryDirectory() as name:
        shutil.copytree(case, pathlib.Path(name) / "plate")
        path = str(program.parent) + os.pathsep + os.environ["PATH"]
        for command in commands:
            subprocess.run(command, shell=True, check=True, cwd=name,
                           env={**os.environ, "PATH": path}, stdout=subprocess.DEVNULL)
        assert (pathlib.Path(name) / "report.html").stat().st_size > 0


main()
