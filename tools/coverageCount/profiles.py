"""The programs of a build, the profiles of their runs, and the output of LLVM's tools for them."""

import json
import os
import re
import subprocess
from collections import defaultdict
from pathlib import Path
from typing import Any

BUILD_ID = re.compile(rb"\x04\0\0\0\x14\0\0\0\x03\0\0\0GNU\0(.{20})", re.DOTALL)


class CannotCount(Exception):
    """The counts are missing or unreliable; the text says why."""


def _run(*command: str, may_fail_by: str = "") -> subprocess.CompletedProcess[str]:
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0 and not (may_fail_by and may_fail_by in done.stderr):
        raise CannotCount(f"{command[0]}: {done.stderr.strip()[-500:]}")
    return done


def programs(build: Path) -> dict[str, Path]:
    """Returns the programs and shared libraries of a build, by build id."""
    found = {}
    for folder, names, files in os.walk(build):
        names[:] = [name for name in names if name not in ("CMakeFiles", "profiles")]
        for path in (Path(folder, name) for name in files):
            if path.is_symlink() or not (os.access(path, os.X_OK) or path.suffix == ".so"):
                continue
            content = path.read_bytes()
            note = BUILD_ID.search(content)
            if content.startswith(b"\x7fELF") and note:
                found[note[1].hex()] = path
    return found


def profiles_by_program(build: Path) -> dict[Path, list[str]]:
    """Returns the profiles of each program that ran."""
    known = programs(build)
    found: dict[Path, list[str]] = defaultdict(list)
    for profile in sorted(build.glob("profiles/*.profraw")):
        build_id = _run("llvm-profdata-19", "show", "--binary-ids", str(profile)).stdout.split()[-1]
        if build_id not in known:
            raise CannotCount(f"{profile} is of a program that is not there any more")
        found[known[build_id]].append(str(profile))
    if not found:
        raise CannotCount(f"no profiles in {build}/profiles")
    return found


def functions_of(program: Path, profiles: list[str]) -> list[dict[str, Any]]:
    """Returns the functions of src in a program with their counts, as llvm-cov exports them."""
    merged = profiles[0].replace(".profraw", ".profdata")
    _run("llvm-profdata-19", "merge", "-sparse", "-o", merged, *profiles)
    export = ["llvm-cov-19", "export", "-instr-profile", merged, "-compilation-dir", os.getcwd(), str(program)]
    done = _run(*export, may_fail_by="no coverage data found")
    if done.returncode != 0:
        return []
    if "mismatched" in done.stderr:
        # A function that one source of the program does not use has no counters there, and hash 0.
        lost = [line for line in _run(*export, "-dump").stderr.splitlines()
                if line.startswith("hash-mismatch") and not line.endswith("hash = 0x0")]
        if lost:
            raise CannotCount("\n".join([f"counts of {program} are lost", *lost]))
    return json.loads(done.stdout)["data"][0]["functions"]
