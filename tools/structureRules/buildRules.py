"""Rules about the sources that the build names."""

import re
from collections.abc import Iterator

from structureRules.breach import Breach
from structureRules.sourceFile import SourceFile

COMPILED = (".cpp", ".c", ".S")
COMMENT = re.compile(r"#.*")
FILE_WORD = re.compile(r"[A-Za-z0-9_.${}/+-]+\.(?:cpp|c|S)(?![A-Za-z0-9])")
VARIABLE = re.compile(r"\$\{\w*\}")


def named_sources(build_files: list[SourceFile]) -> re.Pattern[str]:
    """Matches the name of each source that a CMake file names. A variable within a name matches any letters."""
    names = set()
    for file in build_files:
        for line in file.lines:
            for word in FILE_WORD.findall(COMMENT.sub("", line)):
                parts = VARIABLE.split(word.rsplit("/", 1)[-1])
                names.add("[A-Za-z0-9]*".join(re.escape(part) for part in parts))
    return re.compile("|".join(sorted(names)) or "(?!)")


def built(sources: list[SourceFile], build_files: list[SourceFile]) -> Iterator[Breach]:
    """A source that no CMake file names is never compiled, and its tests never run."""
    known = named_sources(build_files)
    for source in sources:
        if source.suffix in COMPILED and not known.fullmatch(source.name):
            yield Breach(source.path, 1, "no CMakeLists.txt names this file")
