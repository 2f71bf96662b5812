"""The messages of libFuzzer about a run."""

import re
from pathlib import Path

SEED = re.compile(r"INFO: Seed: (\d+)")
STATISTIC = re.compile(r"stat::(\w+):\s+(\d+)")
DONE = re.compile(r"Done (\d+) runs in (\d+) second\(s\)")
FINDING = re.compile(r"^does not hold|ERROR: |runtime error: |Test unit written")


class EngineLog:
    """The output of one process of the engine."""

    def __init__(self, text: str) -> None:
        statistics = dict(STATISTIC.findall(text))
        self.executed = int(statistics.get("number_of_executed_units", 0))
        self.rate = int(statistics.get("average_exec_per_sec", 0))  # a second
        self.new_inputs = int(statistics.get("new_units_added", 0))
        self.has_statistics = "number_of_executed_units" in statistics
        seed = SEED.search(text)
        self.seed = int(seed[1]) if seed else None
        done = DONE.search(text)
        # The number of inputs and of seconds, unless the run ended early.
        self.done = (int(done[1]), int(done[2])) if done else None
        self.findings = [line for line in text.splitlines() if FINDING.search(line)][:3]

    @staticmethod
    def read(file: Path) -> "EngineLog":
        return EngineLog(file.read_text(errors="replace"))

    def shortfall(self, runs: int, seconds: int) -> str:
        """The reason why the run is too short, or an empty text. 0 asks for no number of runs or seconds."""
        if not self.has_statistics or self.done is None:
            return "the engine ended without its final statistics"
        executed, lasted = self.done
        if runs and executed >= runs or seconds and lasted >= seconds:
            return ""
        asked = " or ".join([f"{runs} inputs"] * bool(runs) + [f"{seconds} s"] * bool(seconds))
        return f"the engine ran {executed} inputs in {lasted} s, and was asked for {asked}"
