"""The records of long runs that are kept in the tree: a file for each kind of run, an entry in a line of it."""

import json
from datetime import datetime, timezone
from pathlib import Path
from typing import Any

from runRecords.commit import RUNS


def append(root: Path, kind: str, entry: dict[str, Any]) -> Path:
    """Adds an entry, with the date in front, to docs/runs/KIND.json, a JSON array. Returns the path of the file."""
    file = root / RUNS / f"{kind}.json"
    file.parent.mkdir(parents=True, exist_ok=True)
    entries = json.loads(file.read_text()) if file.exists() else []
    entries.append({"date": datetime.now(timezone.utc).strftime("%Y-%m-%d"), **entry})
    lines = ",\n".join("  " + json.dumps(each) for each in entries)
    file.write_text(f"[\n{lines}\n]\n")
    return file
