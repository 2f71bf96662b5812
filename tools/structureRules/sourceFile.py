"""A file of the tree, with the properties that the rules check."""

import re
from dataclasses import dataclass
from pathlib import Path, PurePosixPath

INCLUDE = re.compile(r"\s*#\s*include\s*([<\"])([^>\"]*)[>\"]")
CODE_SUFFIXES = (".h", ".hpp", ".c", ".cc", ".cpp", ".cxx", ".S")


@dataclass(frozen=True)
class Include:
    """An #include directive."""

    line: int
    name: str  # between the brackets or quotes
    quoted: bool


class SourceFile:
    """The text and the properties of a file. Paths are relative to the root of the tree, with slashes."""

    def __init__(self, path: str, text: str) -> None:
        self.path = path
        self.lines = text.split("\n")
        if self.lines[-1] == "":
            self.lines.pop()
        pure = PurePosixPath(path)
        self.folder = str(pure.parent)
        self.name = pure.name
        self.suffix = pure.suffix
        self.stem = pure.stem
        self.is_code = self.suffix in CODE_SUFFIXES
        self.is_header = self.suffix in (".h", ".hpp")
        self.includes = self._read_includes() if self.is_code else []

    @staticmethod
    def read(root: Path, path: str) -> "SourceFile":
        """Reads a file. Bytes that are not UTF-8 become replacement characters, each one column wide."""
        return SourceFile(path, (root / path).read_text(encoding="utf-8", errors="replace"))

    def is_below(self, folder: str) -> bool:
        """Returns whether the file is in the folder or below it."""
        return self.path.startswith(folder + "/")

    def _read_includes(self) -> list[Include]:
        found = []
        for number, line in enumerate(self.lines, 1):
            if match := INCLUDE.match(line):
                found.append(Include(number, match[2], match[1] == '"'))
        return found
