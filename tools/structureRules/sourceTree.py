"""The files to check."""

import os
from pathlib import Path

from structureRules.sourceFile import CODE_SUFFIXES, SourceFile

PYTHON_SUFFIX = ".py"


def is_python_script(path: Path) -> bool:
    """Returns whether the file is Python, by its suffix or, without one, by its first line."""
    if path.suffix:
        return path.suffix == PYTHON_SUFFIX
    with path.open("rb") as file:
        first = file.readline(80)
    return first.startswith(b"#!") and b"python" in first


class SourceTree:
    """The sources below the given folders of a tree, and the CMake files there and at the root."""

    def __init__(self, root: Path, folders: list[str]) -> None:
        self.root = root
        self.sources: list[SourceFile] = []
        self.build_files: list[SourceFile] = []
        if (root / "CMakeLists.txt").exists():
            self._add(root / "CMakeLists.txt")
        for folder in folders:
            for where, below, names in os.walk(root / folder):
                below[:] = sorted(name for name in below if name != "__pycache__")
                for name in sorted(names):
                    self._add(Path(where, name))
        self.paths = {source.path for source in self.sources}

    def _add(self, file: Path) -> None:
        path = file.relative_to(self.root).as_posix()
        if file.name == "CMakeLists.txt" or file.suffix == ".cmake":
            self.build_files.append(SourceFile.read(self.root, path))
        elif file.suffix in CODE_SUFFIXES or is_python_script(file):
            self.sources.append(SourceFile.read(self.root, path))
