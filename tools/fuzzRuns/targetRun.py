"""One run of a target: one or more processes of its program at once."""

import signal
import subprocess
import time
from pathlib import Path

from fuzzRuns.engineLog import EngineLog
from fuzzRuns.targets import Target

PASSED, FOUND, SHORT = "passed", "FOUND", "SHORT"


class TargetRun:
    """Runs to the end. `runs` is for all processes together, `seconds` for each; 0 sets no limit."""

    def __init__(self, target: Target, runs: int, seconds: int, jobs: int) -> None:
        self._target = target
        self._runs = -(-runs // jobs)
        self._seconds = seconds
        self._processes: list[subprocess.Popen[bytes]] = []
        self.stopped = False  # by an interrupt
        target.make_folders()
        for log in target.logs.glob("[0-9]*"):
            log.unlink()
        before = self._findings()
        began = time.monotonic()
        codes = self._run(jobs)
        self.seconds = round(time.monotonic() - began)
        self.logs = [EngineLog.read(target.logs / str(job)) for job in range(len(codes))]
        self.executed = sum(log.executed for log in self.logs)
        self.seeds = [log.seed for log in self.logs]
        self.why_short = [why for log in self.logs if (why := log.shortfall(self._runs, seconds))]
        if self._findings() != before or any(codes) and not self.stopped:
            self.result = FOUND
        else:
            self.result = SHORT if self.why_short and not self.stopped else PASSED

    def line(self) -> str:
        """The line to print for the run."""
        rate, new_inputs = sum(log.rate for log in self.logs), sum(log.new_inputs for log in self.logs)
        return (f"{self._target.name:20} {self.executed:12} executions {rate:8} a second {new_inputs:6} new inputs  "
                f"{self.result}")

    def reasons(self) -> list[str]:
        """The messages of the findings, or the reasons why the run is too short."""
        if self.result == FOUND:
            return [line for log in self.logs for line in log.findings]
        return self.why_short if self.result == SHORT else []

    def _findings(self) -> dict[Path, int]:
        return {file: file.stat().st_mtime_ns for file in self._target.findings.glob(f"{self._target.name}-*")}

    def _command(self) -> list[str]:
        # Leaks are detected at the end of the process, not after each input.
        command = [str(self._target.program), *self._target.options(), "-detect_leaks=0"]
        if self._seconds:
            command.append(f"-max_total_time={self._seconds}")
        if self._runs:
            command.append(f"-runs={self._runs}")
        return [*command, str(self._target.fresh), str(self._target.kept)]

    def _run(self, jobs: int) -> list[int]:
        """The exit codes."""
        earlier = {number: signal.signal(number, self._stop) for number in (signal.SIGINT, signal.SIGTERM)}
        try:
            for job in range(jobs):
                if self.stopped:
                    break
                with (self._target.logs / str(job)).open("wb") as log:
                    self._processes.append(subprocess.Popen(self._command(), stdin=subprocess.DEVNULL, stdout=log,
                                                            stderr=subprocess.STDOUT, env=self._target.environment()))
            return [process.wait() for process in self._processes]
        finally:
            for number, handler in earlier.items():
                signal.signal(number, handler)

    def _stop(self, *_: object) -> None:
        """The engine ends properly on an interrupt, with its final statistics."""
        self.stopped = True
        for process in self._processes:
            process.send_signal(signal.SIGINT)
