"""clang-format and clang-tidy over the sources."""

import json
import os
import re
import shutil
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from structureRules.sourceTree import SourceTree

COMMANDS = Path("build/linux/compile_commands.json")
# clang cannot use the precompiled headers of another compiler.
PRECOMPILED = re.compile(r" (-Winvalid-pch|-include [^ ]*cmake_pch[^ ]*)")


class CannotCheck(Exception):
    """The check cannot run; the text names the missing tool or input."""


def _need(tool: str) -> None:
    if shutil.which(tool) is None:
        raise CannotCheck(f"{tool} is not installed (scripts/setup lint)")


def format_is_kept(tree: SourceTree) -> bool:
    """Returns whether clang-format has nothing to change; it prints the changes that it would make."""
    _need("clang-format")
    files = [source.path for source in tree.sources if source.is_code and source.suffix != ".S"]
    return subprocess.run(["clang-format", "--dry-run", "-Werror", *files], cwd=tree.root).returncode == 0


def _commands_of_src(root: Path) -> list[dict[str, str]]:
    """The compile commands of the Linux build for src, one for each source. The Windows bodies are not among them."""
    if not (root / COMMANDS).exists():
        raise CannotCheck(f"no {COMMANDS} (cmake --preset linux)")
    first: dict[str, dict[str, str]] = {}
    for entry in json.loads((root / COMMANDS).read_text()):
        if entry["file"].startswith(f"{root}/src/") and entry["file"].endswith(".cpp"):
            first.setdefault(entry["file"], entry | {"command": PRECOMPILED.sub("", entry["command"])})
    if not first:
        raise CannotCheck(f"build/linux builds nothing of {root}/src")
    return [first[file] for file in sorted(first)]


def tidy_finds_nothing(root: Path) -> bool:
    """Returns whether clang-tidy finds nothing in src; it prints its findings."""
    _need("clang-tidy")
    commands = _commands_of_src(root)
    with tempfile.TemporaryDirectory() as work:
        Path(work, "compile_commands.json").write_text(json.dumps(commands))

        def is_clean(command: dict[str, str]) -> bool:
            done = subprocess.run(
                ["clang-tidy", "--quiet", "--warnings-as-errors=*", "--extra-arg=-Wno-unknown-warning-option",
                 "-p", work, command["file"]], cwd=root, stdout=subprocess.PIPE, text=True)
            print(done.stdout, end="", flush=True)
            return done.returncode == 0

        with ThreadPoolExecutor(os.cpu_count()) as pool:
            return all(list(pool.map(is_clean, commands)))
