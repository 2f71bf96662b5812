"""Compares the counts with the required shares and formats both."""

from collections import Counter
from pathlib import Path

from coverageCount import exclusions
from coverageCount.branchCount import BranchCount
from coverageCount.exclusions import Exclusions
from coverageCount.thresholds import THRESHOLDS, Threshold

HEADER = (f"{'':28}{'branches':>9}{'missed':>9}{'excluded':>9}{'taken':>10}{'required':>10}"
          f"{'MC/DC':>10}{'required':>10}")


def percent(part: int, whole: int) -> float:
    """Returns the share of `part`; 0 for an empty whole."""
    return 100 * part / whole if whole else 0.0


def _required(share: float | None) -> str:
    return "-" if share is None else f"{share:g}%"


class Verdict:
    """The result of a count. `root` contains the sources. Only tests pass thresholds."""

    def __init__(self, root: Path, count: BranchCount, excluded: Exclusions,
                 thresholds: dict[str, Threshold] = THRESHOLDS) -> None:
        self._root = root
        self._count = count
        self._exclusions = excluded
        self._thresholds = thresholds
        self._lines: dict[str, list[str]] = {}
        self.report: list[str] = []  # to be printed
        self.faults: list[str] = []  # to be printed at the end; empty if all thresholds hold
        missed, excluded_branches = self._missed_branches()
        self._unshown_conditions()
        self._sources()
        self._table(missed, excluded_branches)

    def _code(self, file: str, line: int) -> str:
        if file not in self._lines:
            self._lines[file] = (self._root / file).read_text().splitlines()
        return self._lines[file][line - 1].strip()

    def _missed_branches(self) -> tuple[Counter[str], Counter[str]]:
        """Counts the branches of each row that were never taken, without and with an exclusion."""
        missed: Counter[str] = Counter()
        excluded: Counter[str] = Counter()
        never = (branch for branch, times in self._count.taken.items()
                 if times == 0 and branch.place.row in self._thresholds)
        for place, outcome in sorted(never):
            code = self._code(place.file, place.line)
            if self._exclusions.take(place.file, code):
                excluded[place.row] += 1
                continue
            missed[place.row] += 1
            if self._thresholds[place.row].branches is not None:
                where = ", ".join(filter(None, [place.row, place.function]))
                value = "true" if outcome else "false"
                self.report.append(f"{place.file}:{place.line}: never {value} ({where}): {code}")
        self.faults += [f"{exclusions.FILE}: taken, or not there: {entry}" for entry in self._exclusions.unused()]
        return missed, excluded

    def _unshown_conditions(self) -> None:
        for place, number in sorted(condition for condition, shown in self._count.decides.items() if not shown):
            threshold = self._thresholds.get(place.row)
            if threshold and threshold.conditions is not None:
                self.report.append(f"{place.file}:{place.line}: condition {number} is not shown to decide by itself "
                                   f"({place.row}): {self._code(place.file, place.line)}")

    def _sources(self) -> None:
        """Reports each source that is neither counted nor excluded."""
        there = {path.relative_to(self._root).as_posix() for path in (self._root / "src").rglob("*")
                 if path.suffix in (".cpp", ".c", ".S")}
        uncounted, excluded = there - self._count.files, self._exclusions.sources.keys()
        self.faults += [f"{file}: no program that was run has it" for file in sorted(uncounted - excluded)]
        self.faults += [f"{exclusions.FILE}: counted, or not there: {file}" for file in sorted(excluded - uncounted)]

    def _table(self, missed: Counter[str], excluded: Counter[str]) -> None:
        self.report.append(HEADER)
        for row, threshold in self._thresholds.items():
            branches = sum(branch.place.row == row for branch in self._count.taken)
            taken = percent(branches - missed[row], branches)
            shown = [value for condition, value in self._count.decides.items() if condition.place.row == row]
            decides = percent(sum(shown), len(shown))
            self.report.append(
                f"{row:28}{branches:9}{missed[row]:9}{excluded[row]:9}{taken:9.2f}%{_required(threshold.branches):>10}"
                f"{f'{decides:.2f}%' if shown else '-':>10}{_required(threshold.conditions):>10}")
            if threshold.branches is not None and taken < threshold.branches:
                self.faults.append(f"{row}: {taken:.2f} % of the branches are taken, "
                                   f"{threshold.branches:g} % are required")
            if threshold.conditions is not None and shown and decides < threshold.conditions:
                self.faults.append(f"{row}: {decides:.2f} % of the conditions are shown to decide by themselves, "
                                   f"{threshold.conditions:g} % are required")
        self.report += [f"not counted: {file}: {reason}" for file, reason in sorted(self._exclusions.sources.items())]
