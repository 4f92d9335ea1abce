"""Builds the library with one mutant in it, from a copy of src/ in a working folder."""

import json
import pathlib
import re
import shlex
import shutil
import subprocess

_INCLUDE = re.compile(r'^\s*#include "([^"]+)"', re.MULTILINE)


class Library:
    """The objects and the shared library of one worker.

    `build` is a CMake build folder of the target weldline_mutable, `checkout` the folder src/ it was
    configured for, `source` a copy of that folder, and `work` a folder that is this worker's alone.
    `original` are the object files that another worker has made of the unchanged sources; they do
    not depend on the folder.
    """

    def __init__(self, build, checkout, source, work, original=None):
        self._work = work
        self._checkout = checkout
        self._source = source
        self._tree = work / "src"
        if work.exists():
            shutil.rmtree(work)
        shutil.copytree(source, self._tree)
        (work / "lib").mkdir()
        self.folder = work / "lib"  # what LD_LIBRARY_PATH must name
        self._commands = self._read_commands(build)
        self._includers = _includers(source, sorted(self._commands))
        self.original = original or {f: self._compile(f, "original") for f in self._commands}

    def _read_commands(self, build):
        """Per source file the compiler's arguments, with the copy in place of src/."""
        listing = subprocess.run(
            ["ninja", "-C", str(build), "-t", "compdb"], capture_output=True, check=True
        )
        commands = {}
        for entry in json.loads(listing.stdout):
            source = pathlib.Path(entry["directory"], entry["file"])
            if "weldline_mutable.dir" in entry["output"] and source.is_relative_to(self._checkout):
                words = entry["command"].replace(str(self._checkout), str(self._tree))
                file = source.relative_to(self._checkout).as_posix()
                commands[file] = (_compiler_only(shlex.split(words)), entry["directory"])
        if not commands:
            raise SystemExit(f"mutate: {build} has no target weldline_mutable")
        return commands

    def _compile(self, file, kind):
        """The object file of a source file, or None when it does not compile."""
        words, directory = self._commands[file]
        output = self._work / kind / f"{file}.o"
        output.parent.mkdir(parents=True, exist_ok=True)
        result = subprocess.run(
            words + ["-o", str(output)], cwd=directory, capture_output=True, timeout=120
        )
        if result.returncode != 0:
            if kind == "original":
                raise SystemExit(f"mutate: {file} does not compile\n{result.stderr.decode()}")
            return None
        return output

    def build(self, file=None, text=None, notices=lambda source: None):
        """Builds the library with another text of one file; with none, as it is.

        The answer is (outcome, detail): "built", "does not compile" or "same machine code" (and
        then nothing is linked). A header goes into one source after the other, and `notices` is
        asked each time with the library so far; "noticed" and its answer end the build early.
        """
        objects = dict(self.original)
        for source in self._includers.get(file, []):
            made = self._compile_with(file, text, source)
            if made is None:
                return "does not compile", ""
            if made.read_bytes() == self.original[source].read_bytes():
                continue
            objects[source] = made
            if len(self._includers[file]) > 1:
                self._link(objects.values())
                detail = notices(source)
                if detail:
                    return "noticed", detail
        if file is not None and objects == self.original:
            return "same machine code", ""
        self._link(objects.values())
        return "built", ""

    def _compile_with(self, file, text, source):
        """The object of a source while the file has another text."""
        path = self._tree / file
        path.write_text(text)
        try:
            return self._compile(source, "mutant")
        finally:
            shutil.copyfile(self._source / file, path)

    def _link(self, objects):
        words, directory = next(iter(self._commands.values()))
        flags = [w for w in words if w.startswith("-fsanitize")]
        library = self.folder / "libweldline_mutable.so"
        library.unlink(missing_ok=True)
        linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        subprocess.run(
            [words[0], "-shared", "-Wl,-Bsymbolic", *linker, *flags, "-o", str(library)]
            + [str(o) for o in objects],
            cwd=directory,
            check=True,
        )


def _compiler_only(words):
    """A command without what the compiler is called through, the list of dependencies that it
    writes, and its output."""
    while not words[0].endswith("++"):
        words = words[1:]
    for option, values in (("-MD", 0), ("-MT", 1), ("-MF", 1), ("-o", 1)):
        if option in words:
            i = words.index(option)
            words = words[:i] + words[i + 1 + values :]
    return words


def _includers(source, files):
    """Per source file and header the source files whose object it has a part in."""
    by_name = {p.name: p.relative_to(source).as_posix() for p in source.rglob("*.h")}

    def reached(file, seen):
        for name in _INCLUDE.findall((source / file).read_text()):
            header = by_name.get(name.split("/")[-1])
            if header is not None and header not in seen:
                seen.add(header)
                reached(header, seen)
        return seen

    includers = {file: [file] for file in files}
    for header in by_name.values():
        includers[header] = []
    for file in files:
        for header in reached(file, set()):
            includers[header].append(file)
    return includers
