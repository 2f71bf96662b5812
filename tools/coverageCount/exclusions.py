"""The branches that no test on Linux can take, with their reasons (unreached.txt)."""

from pathlib import Path

FILE = Path("tools/coverageCount/unreached.txt")


class Exclusions:
    """Excluded branches of lines of code, and whole sources. Each entry excludes a number of branches."""

    def __init__(self, text: str) -> None:
        self.sources: dict[str, str] = {}  # to the reason why they are not counted
        self._branches: dict[tuple[str, str], int] = {}  # file and code to the number of branches left
        for line in text.splitlines():
            if line.strip() and not line.startswith("#"):
                file, code, count, reason = (field.strip() for field in line.split(" | "))
                if code == "*":
                    self.sources[file] = reason
                else:
                    self._branches[file, code] = int(count)

    def take(self, file: str, code: str) -> bool:
        """Uses up one excluded branch of this line; returns whether there was one."""
        left = self._branches.get((file, code), 0)
        if left:
            self._branches[file, code] = left - 1
        return left > 0

    def unused(self) -> list[str]:
        """The entries whose branches were taken, or do not exist."""
        return [f"{file} | {code}" for (file, code), left in self._branches.items() if left]
