"""The build that a run used."""

import hashlib
import re
from pathlib import Path

SETTING = re.compile(r'^set\(CMAKE_CXX_COMPILER_(ID|VERSION) "([^"]*)"\)$', re.MULTILINE)


def compiler(build: Path) -> str:
    """Its compiler's name and version as CMake found them, or "unknown" for a folder that CMake did not configure."""
    for file in build.glob("CMakeFiles/*/CMakeCXXCompiler.cmake"):
        settings = dict(SETTING.findall(file.read_text()))
        return f"{settings['ID']} {settings['VERSION']}"
    return "unknown"


def library_of(build: Path) -> str:
    """The shipped library in a folder of the build: its name and the first digits of its SHA-256, or "none"."""
    for name in ("lib/libmordRev.so", "bin/mordRev.dll"):
        if (build / name).exists():
            return f"{Path(name).name} {hashlib.sha256((build / name).read_bytes()).hexdigest()[:16]}"
    return "none"


def command(root: Path, program: Path) -> list[str]:
    """The command that starts a program of a build; Wine starts Windows programs."""
    return [str(root / "scripts/wine"), str(program)] if program.suffix == ".exe" else [str(program)]


def program_of(root: Path, preset: str, name: str) -> Path:
    """The test program of a preset's build."""
    return root / "build" / preset / "tests" / (name + (".exe" if preset.startswith("windows") else ""))
