"""One process of a long comparison: the random cases of one seed."""

import re
import subprocess
from pathlib import Path
from typing import NamedTuple

RESULT = re.compile(r"seed (\d+): (\d+) cases, (\d+) differences, \d+ s")


class PieceResult(NamedTuple):
    """The result of a piece."""

    output: str
    differences: int
    fault: str  # why it failed, or an empty text


def judge(seed: int, cases: int, code: int, output: str) -> PieceResult:
    """A piece passes if its last line is the result of all cases of the seed and its exit code is 0."""
    lines = output.splitlines()
    result = RESULT.fullmatch(lines[-1]) if lines else None
    differences = int(result[3]) if result else 0
    if code != 0:
        return PieceResult(output, differences, f"exit code {code}" if code > 0 else f"ended by signal {-code}")
    if not result:
        return PieceResult(output, 0, "it ended without its result line")
    if (int(result[1]), int(result[2])) != (seed, cases):
        return PieceResult(output, differences, f"its result is not that of seed {seed} with {cases} cases")
    if differences:
        return PieceResult(output, differences, f"{differences} differences, and exit code 0")
    return PieceResult(output, 0, "")


class Piece:
    """Starts `COMMAND SEED CASES`, with its output in a file of the folder."""

    def __init__(self, command: list[str], seed: int, cases: int, folder: Path) -> None:
        self.seed = seed
        self.cases = cases
        self._output = folder / str(seed)
        with self._output.open("wb") as output:
            self._process = subprocess.Popen([*command, str(seed), str(cases)], stdin=subprocess.DEVNULL, stdout=output,
                                             stderr=subprocess.STDOUT)

    def finish(self) -> PieceResult:
        """Waits for the end."""
        code = self._process.wait()
        return judge(self.seed, self.cases, code, self._output.read_text(errors="replace"))

    def stop(self) -> None:
        """Ends the process if it still runs."""
        if self._process.poll() is None:
            self._process.terminate()
            self._process.wait()
