"""The build that a run used."""

import hashlib
from pathlib import Path


def library_of(build: Path) -> str:
    """The shipped library in a folder of the build: its name and the beginning of its SHA-256, or "none"."""
    for name in ("lib/libmordRev.so", "bin/mordRev.dll"):
        if (build / name).exists():
            return f"{Path(name).name} {hashlib.sha256((build / name).read_bytes()).hexdigest()[:16]}"
    return "none"


def command(root: Path, program: Path) -> list[str]:
    """How to start a program of a build: Windows programs by Wine."""
    return [str(root / "scripts/wine"), str(program)] if program.suffix == ".exe" else [str(program)]


def program_of(root: Path, preset: str, name: str) -> Path:
    """The test program of a preset's build."""
    return root / "build" / preset / "tests" / (name + (".exe" if preset.startswith("windows") else ""))
