"""A file with a line for each run: time, preset, target, commit, executions, seconds, result."""

from datetime import datetime, timezone
from pathlib import Path


class Counts:
    """Lines are only added. Sums are over all lines, whatever their commits."""

    def __init__(self, file: Path, preset: str) -> None:
        self._file = file
        self._preset = preset
        file.parent.mkdir(parents=True, exist_ok=True)
        file.touch()

    def add(self, target: str, commit: str, executed: int, seconds: int, result: str) -> None:
        when = datetime.now(timezone.utc).strftime("%Y-%m-%dT%H:%M:%SZ")
        with self._file.open("a") as file:
            print(when, self._preset, target, commit, executed, seconds, result, file=file)

    def _runs(self, target: str) -> list[list[str]]:
        lines = (line.split() for line in self._file.read_text().splitlines())
        return [fields for fields in lines if fields[1:3] == [self._preset, target]]

    def executed(self, target: str) -> int:
        return sum(int(fields[4]) for fields in self._runs(target))

    def summary(self, target: str) -> str:
        runs = self._runs(target)
        seconds = sum(int(fields[5]) for fields in runs)
        found = sum(fields[6] == "FOUND" for fields in runs)
        return (f"{target:20} {self.executed(target):12} executions in {len(runs):4} runs {seconds:8} seconds "
                f"{found:4} with findings")
