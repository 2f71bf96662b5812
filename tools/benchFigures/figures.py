"""What bench/run measured of one build."""

from collections import defaultdict
from statistics import median


class Figures:
    """A figure is a name and its value, a line each; a name may come several times."""

    def __init__(self, text: str) -> None:
        self._values: dict[str, list[float]] = defaultdict(list)
        self.missing: list[str] = []  # what was asked for and is not there, in the order of asking
        for line in text.splitlines():
            if line.strip():
                name, value = line.split()[:2]
                self._values[name].append(float(value))

    def count(self, name: str) -> int:
        """How often it was measured."""
        return len(self._values.get(name, []))

    def _of(self, name: str) -> list[float]:
        """The values of a figure, or a 1 in the place of one that is missing."""
        if name not in self._values:
            if name not in self.missing:
                self.missing.append(name)
            return [1.0]
        return self._values[name]

    def least(self, name: str) -> float:
        """What the work takes when nothing disturbs it."""
        return min(self._of(name))

    def median(self, name: str) -> float:
        return median(self._of(name))

    def latest(self, name: str) -> float:
        return self._of(name)[-1]
