"""A place in the tree that breaks a rule."""

from typing import NamedTuple


class Breach(NamedTuple):
    """A rule that a line breaks. Sorts by file, then by line."""

    file: str  # from the root of the tree
    line: int  # from 1
    message: str

    def __str__(self) -> str:
        return f"{self.file}:{self.line}: {self.message}"
