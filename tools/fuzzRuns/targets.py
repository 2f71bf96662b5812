"""The fuzzed targets, and what their programs are given."""

from pathlib import Path

TARGETS = ("allowList", "actionTable", "queryResult", "hostRecords", "hostAnswers", "iniFile", "targetMemory32",
           "targetMemory64")


class Target:
    """The places of one target in one build."""

    def __init__(self, root: Path, preset: str, name: str) -> None:
        build = root / "build" / preset
        self.name = name
        self.program = build / "fuzz" / name
        self.kept = root / "fuzz" / "corpus" / name.removesuffix("32").removesuffix("64")
        self.fresh = build / "corpus" / name  # new inputs, for the next run
        self.findings = build / "findings"
        self.logs = build / "logs" / name
        self._dictionary = root / "fuzz" / f"{name}.dict"

    def options(self) -> list[str]:
        """Of libFuzzer, for all kinds of runs."""
        options = ["-max_len=512", "-timeout=20", "-rss_limit_mb=2048", "-entropic=0",
                   f"-artifact_prefix={self.findings}/{self.name}-", "-print_final_stats=1"]
        return options + ([f"-dict={self._dictionary}"] if self._dictionary.exists() else [])

    def make_folders(self) -> None:
        for folder in (self.fresh, self.findings, self.logs):
            folder.mkdir(parents=True, exist_ok=True)
