"""Compares the counts with the promised shares and formats both."""

from collections import Counter
from pathlib import Path

from coverageCount import excuses
from coverageCount.branchCount import BranchCount
from coverageCount.excuses import Excuses
from coverageCount.promises import PROMISES, Promise

HEADER = (f"{'':28}{'branches':>9}{'missed':>9}{'excused':>9}{'taken':>10}{'promised':>10}"
          f"{'MC/DC':>10}{'promised':>10}")


def percent(part: int, whole: int) -> float:
    """Returns the share of `part`; 0 for an empty whole."""
    return 100 * part / whole if whole else 0.0


def _promised(share: float | None) -> str:
    return "-" if share is None else f"{share:g}%"


class Verdict:
    """The result of a count. `root` contains the sources. Only tests pass other promises than those of promises.py."""

    def __init__(self, root: Path, count: BranchCount, excused: Excuses,
                 promises: dict[str, Promise] = PROMISES) -> None:
        self._root = root
        self._count = count
        self._excuses = excused
        self._promises = promises
        self._lines: dict[str, list[str]] = {}
        self.report: list[str] = []  # to be printed
        self.faults: list[str] = []  # to be printed at the end; empty if all promises hold
        missed, excused_branches = self._missed_branches()
        self._unshown_conditions()
        self._sources()
        self._table(missed, excused_branches)

    def _code(self, file: str, line: int) -> str:
        if file not in self._lines:
            self._lines[file] = (self._root / file).read_text().splitlines()
        return self._lines[file][line - 1].strip()

    def _missed_branches(self) -> tuple[Counter[str], Counter[str]]:
        """Counts the branches of each row that were never taken, without and with an excuse."""
        missed: Counter[str] = Counter()
        excused: Counter[str] = Counter()
        never = (branch for branch, times in self._count.taken.items()
                 if times == 0 and branch.place.row in self._promises)
        for place, outcome in sorted(never):
            code = self._code(place.file, place.line)
            if self._excuses.take(place.file, code):
                excused[place.row] += 1
                continue
            missed[place.row] += 1
            if self._promises[place.row].branches is not None:
                where = ", ".join(filter(None, [place.row, place.function]))
                value = "true" if outcome else "false"
                self.report.append(f"{place.file}:{place.line}: never {value} ({where}): {code}")
        self.faults += [f"{excuses.FILE}: taken, or not there: {entry}" for entry in self._excuses.unused()]
        return missed, excused

    def _unshown_conditions(self) -> None:
        for place, number in sorted(condition for condition, shown in self._count.decides.items() if not shown):
            promise = self._promises.get(place.row)
            if promise and promise.conditions is not None:
                self.report.append(f"{place.file}:{place.line}: condition {number} is not shown to decide by itself "
                                   f"({place.row}): {self._code(place.file, place.line)}")

    def _sources(self) -> None:
        """Reports each source that is neither counted nor excused."""
        there = {path.relative_to(self._root).as_posix() for path in (self._root / "src").rglob("*")
                 if path.suffix in (".cpp", ".c", ".S")}
        uncounted, excused = there - self._count.files, self._excuses.sources.keys()
        self.faults += [f"{file}: no program that was run has it" for file in sorted(uncounted - excused)]
        self.faults += [f"{excuses.FILE}: counted, or not there: {file}" for file in sorted(excused - uncounted)]

    def _table(self, missed: Counter[str], excused: Counter[str]) -> None:
        self.report.append(HEADER)
        for row, promise in self._promises.items():
            branches = sum(branch.place.row == row for branch in self._count.taken)
            taken = percent(branches - missed[row], branches)
            shown = [value for condition, value in self._count.decides.items() if condition.place.row == row]
            decides = percent(sum(shown), len(shown))
            self.report.append(
                f"{row:28}{branches:9}{missed[row]:9}{excused[row]:9}{taken:9.2f}%{_promised(promise.branches):>10}"
                f"{f'{decides:.2f}%' if shown else '-':>10}{_promised(promise.conditions):>10}")
            if promise.branches is not None and taken < promise.branches:
                self.faults.append(f"{row}: {taken:.2f} % of the branches are taken, "
                                   f"{promise.branches:g} % are promised")
            if promise.conditions is not None and shown and decides < promise.conditions:
                self.faults.append(f"{row}: {decides:.2f} % of the conditions are shown to decide by themselves, "
                                   f"{promise.conditions:g} % are promised")
        self.report += [f"not counted: {file}: {reason}" for file, reason in sorted(self._excuses.sources.items())]
