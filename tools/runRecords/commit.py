"""Which state of the tree a run was made with."""

import subprocess
from pathlib import Path

RUNS = "docs/runs"


def _git(root: Path, *arguments: str) -> str | None:
    try:
        done = subprocess.run(["git", *arguments], cwd=root, capture_output=True, text=True)
    except FileNotFoundError:
        return None
    return done.stdout.strip() if done.returncode == 0 else None


def commit(root: Path) -> str:
    """The short hash, with a + where files have changed since; "unknown" outside of a repository."""
    name = _git(root, "rev-parse", "--short", "HEAD")
    if name is None:
        return "unknown"
    # A record of an earlier run is no change of what is run.
    return name + ("+" if _git(root, "status", "--porcelain", "--", ".", f":!{RUNS}") else "")


def is_recordable(name: str) -> bool:
    """Whether others can make the same state again."""
    return name != "unknown" and not name.endswith("+")
