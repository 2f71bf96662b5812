"""Runs one test program under tools/testRun and classifies the result."""

import os
import re
import signal
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TEST_RUN = [sys.executable, "-E", "-s", "-S", str(ROOT / "tools" / "testRun")]
CANNOT_START = {2, 127}  # exit codes of tools/testRun for a wrong call and for a program that it cannot start
MEMORY = 6 << 30  # bytes of private memory: a mutant that allocates without end must not fill the machine
FAILED_CASE = re.compile(rb"^\[  FAILED  \] ([\w/]+\.[\w/]+)", re.M)


@dataclass(frozen=True)
class Limits:
    """Processor seconds of the program, which do not depend on the machine's load, and seconds for one that waits."""

    processor: int
    elapsed: float


UNCHANGED = Limits(processor=300, elapsed=600.0)  # for programs on the unchanged tree
LEAST_PROCESSOR, LEAST_ELAPSED = 5, 60.0
PATIENCE = 10  # how many times longer than on the unchanged tree


@dataclass(frozen=True)
class Result:
    """`kind` is "passed", "failed" or "timeout"; `detail` is the first failed case, or how the program ended."""

    kind: str
    detail: str
    processor: float
    elapsed: float

    def limits(self) -> Limits:
        """Returns the limits for a changed tree, from a result on the unchanged one."""
        return Limits(max(LEAST_PROCESSOR, int(PATIENCE * self.processor) + 1),
                      max(LEAST_ELAPSED, PATIENCE * self.elapsed))


def runProgram(program: Path, limits: Limits, *arguments: str) -> Result:
    """Raises RuntimeError if the program cannot be started: that says nothing about a mutant."""
    environment = dict(os.environ, GTEST_BREAK_ON_FAILURE="0", GTEST_FAIL_FAST="1")
    command = ["prlimit", f"--cpu={limits.processor}", f"--data={MEMORY}", *TEST_RUN, str(program), *arguments]
    with tempfile.TemporaryFile() as output:
        began = time.monotonic()
        process = subprocess.Popen(command, cwd=program.parent, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=output, stderr=output, start_new_session=True)
        hasEnded, code, processor = _waitFor(process, began + limits.elapsed)
        elapsed = time.monotonic() - began
        output.seek(0)
        written = output.read()
    if not hasEnded:
        return Result("timeout", "waits", processor, elapsed)
    if code == 0:
        return Result("passed", "", processor, elapsed)
    if code in CANNOT_START:
        raise RuntimeError(f"{program.name} cannot be started: {written[-500:].decode(errors='replace')}")
    if code in (128 + signal.SIGXCPU, 128 + signal.SIGKILL):
        return Result("timeout", "runs", processor, elapsed)
    case = FAILED_CASE.search(written)
    return Result("failed", case[1].decode() if case else _ending(code), processor, elapsed)


def _ending(code: int) -> str:
    return f"signal{code - 128}" if code > 128 else "endedEarly"


def _waitFor(process: subprocess.Popen, end: float) -> tuple[bool, int, float]:
    """Returns whether the program ended by itself, its exit code, and its processor seconds."""
    pause, hasEnded = 0.005, True
    while True:
        ended, status, usage = os.wait4(process.pid, os.WNOHANG)
        if ended != 0:
            break
        if hasEnded and time.monotonic() > end:
            os.killpg(process.pid, signal.SIGKILL)
            hasEnded = False
        time.sleep(pause)
        pause = min(pause * 1.5, 0.1)
    process.returncode = os.waitstatus_to_exitcode(status)  # the process is reaped
    return hasEnded, process.returncode, usage.ru_utime + usage.ru_stime
