"""The files that are checked."""

import os
from pathlib import Path

from structureRules.sourceFile import CODE_SUFFIXES, SourceFile

PYTHON_SUFFIX = ".py"


def is_python_script(path: Path) -> bool:
    """Whether a file without a suffix begins like a Python program."""
    if path.suffix:
        return path.suffix == PYTHON_SUFFIX
    with path.open("rb") as file:
        first = file.readline(80)
    return first.startswith(b"#!") and b"python" in first


class SourceTree:
    """The sources below some folders of a tree, and the CMake files beside them and at the root."""

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
