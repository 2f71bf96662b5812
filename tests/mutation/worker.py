"""A copy of the tree with a separate build, in which one mutant after the other is built and tested."""

import os
import shutil
import subprocess
from pathlib import Path

import mutants
from covering import LOADED, covering
from programRun import UNCHANGED, Limits, Result, runProgram

ROOT = Path(__file__).resolve().parents[2]


class Worker:
    def __init__(self, number: int, programs: list[str]):
        self.tree = ROOT / "build" / "mutation" / f"worker{number}"
        self.build = self.tree / "build" / "linux-mutation"
        self.programs = programs  # those that the run needs
        self.apart: dict[str, list[str]] = {}  # the programs whose cases need a process each, with their cases
        self.limits: dict[str, Limits] = {}

    def prepare(self) -> None:
        """Copies the tree, builds it and runs the programs. Raises RuntimeError if the unchanged tree fails."""
        self._copyTree()
        self._must(["cmake", "--preset", "linux-mutation"])
        self._must(["ninja", "-C", str(self.build), "-j2", *LOADED, *(f"tests/{name}" for name in self.programs)])
        for program in self.programs:
            result = runProgram(self.build / "tests" / program, UNCHANGED)
            self.limits[program] = result.limits()
            if result.kind != "passed":  # its cases need a process each
                self.apart[program] = self._cases(program)
                result = self._run(program)
                if result.kind != "passed":
                    raise RuntimeError(f"{program} fails on the unchanged tree: {result.kind} {result.detail}")

    def verdict(self, mutant: mutants.Mutant) -> tuple[str, str]:
        """Returns the outcome and what decided it.

        "killed" with PROGRAM:CASE, "timeout" with the first program that exceeded its limit while no program failed,
        "survived", or "invalid" if the mutant does not compile.
        """
        path = self.tree / mutant.file
        original = path.read_text()
        path.write_text(mutants.apply(original, mutant))
        slow = ""
        try:
            for program in covering(mutant.file):
                if not self._builds(program):
                    return "invalid", ""
                result = self._run(program)
                if result.kind == "failed":
                    return "killed", f"{program}:{result.detail}"
                if result.kind == "timeout":
                    slow = slow or f"{program}:{result.detail}"
            return ("timeout", slow) if slow else ("survived", "")
        finally:
            path.write_text(original)

    def _copyTree(self) -> None:
        names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                               capture_output=True).stdout.decode().split("\0")
        for name in filter(None, names):
            source, copy = ROOT / name, self.tree / name
            if not source.is_file():
                copy.unlink(missing_ok=True)
                continue
            if copy.is_file() and copy.read_bytes() == source.read_bytes():
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, copy)

    def _must(self, command: list[str]) -> None:
        done = subprocess.run(command, cwd=self.tree, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:
            raise RuntimeError(" ".join(command[:4]) + " failed:\n" + done.stdout.decode(errors="replace")[-3000:])

    def _builds(self, program: str) -> bool:
        environment = dict(os.environ, CCACHE_READONLY="1")  # objects of mutants would only fill the cache
        return subprocess.run(["ninja", "-C", str(self.build), "-j2", *LOADED, f"tests/{program}"], env=environment,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def _run(self, program: str) -> Result:
        path, limits = self.build / "tests" / program, self.limits[program]
        if program not in self.apart:
            return runProgram(path, limits)
        slow = None
        for case in self.apart[program]:
            result = runProgram(path, limits, f"--gtest_filter={case}")
            if result.kind == "failed":
                return result
            if result.kind == "timeout":
                slow = result
                break  # most other cases would wait as well; the next program is asked
        return slow or result

    def _cases(self, program: str) -> list[str]:
        """Returns the full names of the program's cases."""
        listing = subprocess.run([str(self.build / "tests" / program), "--gtest_list_tests"], check=True,
                                 cwd=self.build / "tests", capture_output=True).stdout.decode()
        suite, found = "", []
        for line in listing.splitlines():
            name = line.split("#")[0].rstrip()
            if line.startswith("  "):
                found.append(suite + name.strip())
            else:
                suite = name
        return found
