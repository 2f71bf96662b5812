"""Adds up the branches and conditions of src that several programs took."""

import re
from collections import Counter
from collections.abc import Iterator
from pathlib import Path
from typing import Any, NamedTuple

from coverageCount.profiles import CannotCount
from coverageCount.thresholds import CALLERS

EXPANSION = 1  # the kind of a region that a macro expands to


class Place(NamedTuple):
    """The place of a condition."""

    row: str  # of the table that it counts for
    file: str
    way: tuple[tuple[int, int], ...]  # lines and columns, from the code into the macros that it uses
    function: str  # in a .cpp file; empty in a header, whose code counts once

    @property
    def line(self) -> int:
        return self.way[0][0]


class Branch(NamedTuple):
    """One outcome of one condition."""

    place: Place
    outcome: bool


class Condition(NamedTuple):
    """One condition of an expression with && or ||."""

    place: Place
    number: int  # from 1


class BranchCount:
    """The counts of src below `root`."""

    def __init__(self, root: Path) -> None:
        self._root = root
        self.taken: Counter[Branch] = Counter()
        self.decides: dict[Condition, bool] = {}  # to whether one program shows that it decides independently
        self.files: set[str] = set()

    def add(self, functions: list[dict[str, Any]]) -> None:
        """Adds the functions of one program."""
        files = {name for function in functions for name in self._files_of(function)}
        rows = sorted({row for name, row in CALLERS.items() if name in files})
        if len(rows) > 1:
            raise CannotCount("a program has sources of callers of either width")
        self.files |= files
        for function in functions:
            self._add_function(function, rows or sorted(set(CALLERS.values())))

    def _files_of(self, function: dict[str, Any]) -> list[str]:
        return [name.removeprefix(f"{self._root}/") for name in function["filenames"]]

    def _add_function(self, function: dict[str, Any], native_rows: list[str]) -> None:
        files = self._files_of(function)
        sites = {region[6]: (region[5], region[0], region[1]) for region in function["regions"]
                 if region[7] == EXPANSION}

        def places(number: int, line: int, column: int) -> Iterator[Place]:
            """One place for each row that it counts for."""
            way = [(line, column)]
            while number in sites:
                number, line, column = sites[number]
                way.insert(0, (line, column))
            file = files[number]
            # The name without the prefix of a local function: its file.
            name = re.split("[;:]", function["name"])[-1] if file.endswith(".cpp") else ""
            folder = "/".join(file.split("/")[:2])
            for row in native_rows if folder == "src/native" else [folder]:
                yield Place(row, file, tuple(way), name)

        for line, column, _, _, true, false, number, *_ in function["branches"]:
            for place in places(number, line, column):
                self.taken[Branch(place, True)] += true
                self.taken[Branch(place, False)] += false
        for line, column, _, _, number, _, conditions in function["mcdc_records"]:
            for place in places(number, line, column):
                for at, shown in enumerate(conditions, 1):
                    condition = Condition(place, at)
                    self.decides[condition] = shown or self.decides.get(condition, False)
