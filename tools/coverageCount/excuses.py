"""What no test on Linux can take, each entry with its reason (unreached.txt)."""

from pathlib import Path

FILE = Path("tools/coverageCount/unreached.txt")


class Excuses:
    """Branches of a line of code, and whole sources. A branch that is excused is used up."""

    def __init__(self, text: str) -> None:
        self.sources: dict[str, str] = {}  # to why they are not counted
        self._branches: dict[tuple[str, str], int] = {}  # file and code to how many are left
        for line in text.splitlines():
            if line.strip() and not line.startswith("#"):
                file, code, count, reason = (field.strip() for field in line.split(" | "))
                if code == "*":
                    self.sources[file] = reason
                else:
                    self._branches[file, code] = int(count)

    def take(self, file: str, code: str) -> bool:
        """Whether one more branch of this line is excused."""
        left = self._branches.get((file, code), 0)
        if left:
            self._branches[file, code] = left - 1
        return left > 0

    def unused(self) -> list[str]:
        """The branches that are excused and were taken, or are not there."""
        return [f"{file} | {code}" for (file, code), left in self._branches.items() if left]
