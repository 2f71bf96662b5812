"""Programs for tests to run: Python scripts in a separate folder."""

import subprocess
import sys
import tempfile
import textwrap
import unittest
from pathlib import Path

TOOLS = Path(__file__).resolve().parents[1]


class FakeProgramTest(unittest.TestCase):
    """A test case with a temporary folder."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def program(self, name: str, code: str) -> str:
        """Creates an executable file that runs the code; `say` prints a line and flushes."""
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(f"#!{sys.executable} -ES\nimport os, sys\ndef say(text): print(text, flush=True)\n"
                        + textwrap.dedent(code))
        file.chmod(0o755)
        return str(file)

    def run_tool(self, name: str, *arguments: str, **options) -> subprocess.CompletedProcess[str]:
        return subprocess.run([sys.executable, "-ES", str(TOOLS / name), *arguments], capture_output=True, text=True,
                              timeout=60, **options)
