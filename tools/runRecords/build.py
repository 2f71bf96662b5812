"""The compiler of a build."""

import re
from pathlib import Path

SETTING = re.compile(r'^set\(CMAKE_CXX_COMPILER_(ID|VERSION) "([^"]*)"\)$', re.MULTILINE)


def compiler(build: Path) -> str:
    """Its name and version as CMake found them, or "unknown" for a folder that CMake did not configure."""
    for file in build.glob("CMakeFiles/*/CMakeCXXCompiler.cmake"):
        settings = dict(SETTING.findall(file.read_text()))
        return f"{settings['ID']} {settings['VERSION']}"
    return "unknown"
