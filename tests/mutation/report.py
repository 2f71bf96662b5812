"""The report of a run, and the list of known survivors."""

import hashlib
import re
from pathlib import Path

import mutants
from covering import mutatedFiles

ROOT = Path(__file__).resolve().parents[2]
OUTCOME = re.compile(r"(killed|timeout|invalid|survived) +(\S*) +line (\d+): (.*)")


def oneLine(key: str) -> str:
    return key.replace("\n", "⏎")


def outcomeLine(mutant: mutants.Mutant, outcome: str, detail: str) -> str:
    return f"{outcome:9} {detail:24} line {mutant.line}: {oneLine(mutant.key())}"


def states() -> dict[str, str]:
    """Returns a hash for each mutated file, of its contents and of the kinds of change."""
    kinds = Path(mutants.__file__).read_bytes()
    return {str(path.relative_to(ROOT)): hashlib.sha256(kinds + path.read_bytes()).hexdigest()
            for path in mutatedFiles(ROOT)}


def earlier(report: Path) -> dict[tuple[int, str], tuple[str, str]]:
    """Returns the outcomes of an earlier run for files that have not changed: (line, key) -> (outcome, detail)."""
    found, then = {}, {}
    for line in report.read_text().splitlines() if report.is_file() else []:
        if line.startswith("file "):
            state, name = line.split(" ", 2)[1:]
            then[name] = state
        elif match := OUTCOME.fullmatch(line):
            found[int(match[3]), match[4].replace("⏎", "\n")] = (match[1], match[2])
    same = {name for name, state in states().items() if then.get(name) == state}
    return {mutant: outcome for mutant, outcome in found.items() if mutant[1].split(" | ")[0] in same}


def listedSurvivors() -> dict[str, str]:
    """Returns the reason for each listed survivor, by its key."""
    entries = {}
    for line in (Path(__file__).parent / "survivors.txt").read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            key, reason = line.rsplit(" | because ", 1)
            entries[key.strip().replace("⏎", "\n")] = reason.strip()
    return entries
