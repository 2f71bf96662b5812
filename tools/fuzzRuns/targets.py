"""The fuzzed targets: their programs, folders and options."""

import os
from pathlib import Path

TARGETS = ("allowList", "actionTable", "queryResult", "hostRecords", "hostAnswers", "iniFile", "targetMemory32",
           "targetMemory64")
# The dictionary of a target. A target without one has numbers for an input, or texts that the fuzzer rarely reaches.
DICTIONARIES = {"allowList": "json", "actionTable": "json", "queryResult": "json", "hostAnswers": "json",
                "iniFile": "iniFile"}
# For speed, AddressSanitizer keeps no stacks of allocations, and only the freed memory of the last inputs. A program
# that is started by hand keeps both.
SANITIZER_OPTIONS = "malloc_context_size=0:quarantine_size_mb=2:thread_local_quarantine_size_kb=256"


class Target:
    """The places of one target in one build."""

    def __init__(self, root: Path, preset: str, name: str) -> None:
        build = root / "build" / preset
        self.name = name
        self.program = build / "fuzz" / name
        self.kept = root / "tests/fuzz/corpus" / name.removesuffix("32").removesuffix("64")
        self.fresh = build / "corpus" / name  # new inputs, for the next run
        self.findings = build / "findings"
        self.logs = build / "logs" / name
        self._dictionary = root / "tests/fuzz" / f"{DICTIONARIES.get(name)}.dict"

    def options(self) -> list[str]:
        """libFuzzer's options for all kinds of runs. The targets themselves limit the time of an input."""
        options = ["-max_len=512", "-timeout=60", "-rss_limit_mb=2048", "-entropic=0",
                   f"-artifact_prefix={self.findings}/{self.name}-", "-print_final_stats=1"]
        return options + ([f"-dict={self._dictionary}"] if self.name in DICTIONARIES else [])

    def environment(self) -> dict[str, str]:
        """The environment of the program."""
        added = os.environ.get("ASAN_OPTIONS")
        return os.environ | {"ASAN_OPTIONS": SANITIZER_OPTIONS + (f":{added}" if added else "")}

    def make_folders(self) -> None:
        for folder in (self.fresh, self.findings, self.logs):
            folder.mkdir(parents=True, exist_ok=True)
