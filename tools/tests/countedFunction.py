"""Functions as llvm-cov exports them."""

from typing import Any


def counted(name: str, file: str, true: int, false: int, conditions: tuple[bool, ...] = (True,)) -> dict[str, Any]:
    """A function with a condition in its first line, with the counts of both outcomes."""
    return {"name": name, "filenames": [file], "regions": [[1, 1, 1, 9, 1, 0, 0, 0]],
            "branches": [[1, 5, 1, 8, true, false, 0, 0, 4]],
            "mcdc_records": [[1, 5, 1, 8, 0, 5, list(conditions)]]}


def logs(name: str, file: str, macro_file: str, true: int, false: int) -> dict[str, Any]:
    """A function with one log site in its second line, whose condition is in the macro."""
    return {"name": name, "filenames": [file, macro_file], "regions": [[2, 5, 2, 14, 1, 0, 1, 1]],
            "branches": [[9, 3, 9, 8, true, false, 1, 0, 4]], "mcdc_records": []}
