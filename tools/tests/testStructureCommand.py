"""tools/structure as a command, with substitutes for clang-format and clang-tidy."""

import json
import os
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from structureRules import layerTable

TOOL = Path(__file__).resolve().parents[1] / "structure"

# Both substitutes reject files named planted.cpp and no others.
CLANG_FORMAT = """#!{python}
import sys
planted = [name for name in sys.argv if name.endswith("planted.cpp")]
print("\\n".join(f"{{name}}: fault" for name in planted), end="\\n" if planted else "")
sys.exit(1 if planted or "-Werror" not in sys.argv else 0)
"""
CLANG_TIDY = """#!{python}
import json, sys
source = sys.argv[-1]
folder = sys.argv[sys.argv.index("-p") + 1]
commands = {{entry["file"]: entry["command"] for entry in json.load(open(folder + "/compile_commands.json"))}}
if "cmake_pch" in commands[source] or "-Winvalid-pch" in commands[source]:
    sys.exit("precompiled headers of another compiler")
if source.endswith("planted.cpp"):
    print("planted.cpp: fault")
    sys.exit(1)
"""


class Command(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name, "tree")
        self.tools = Path(folder.name, "tools")
        self.tools.mkdir()
        self.write_what_the_exceptions_need()
        self.write("src/frame/one.h", "")

    def write_what_the_exceptions_need(self) -> None:
        """Adds the includes that the real table lists as exceptions; unused ones would be reported."""
        texts: dict[str, str] = {"CMakeLists.txt": "planted.cpp\n"}
        for file, included in layerTable.EXCEPTIONS:
            name = included.removeprefix("src/") if file.startswith("src/") else included
            texts[file] = texts.get(file, "") + f'#include "{name}"\n'
            texts.setdefault(included, "")
        for file in texts:
            if file.endswith("Test.cpp"):
                texts[file] += "TEST(Suite, Case) {\n"
            if file.endswith(".cpp"):
                texts["CMakeLists.txt"] += f"{file}\n"
        for file, text in texts.items():
            self.write(file, text)

    def write(self, path: str, text: str) -> None:
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text)

    def stand_in(self, name: str, text: str) -> None:
        file = self.tools / name
        file.write_text(text.format(python=sys.executable))
        file.chmod(file.stat().st_mode | stat.S_IXUSR)

    def built(self, *files: str) -> None:
        """The commands of a build of these sources."""
        self.write("build/linux/compile_commands.json", json.dumps([
            {"directory": "/", "command": f"c++ -Winvalid-pch -include /a/cmake_pch.hxx -c {file}", "file": file}
            for file in files]))

    def run_tool(self, *arguments: str) -> tuple[int, list[str]]:
        """Returns the exit code and the output of both streams."""
        done = subprocess.run([sys.executable, TOOL, *arguments], capture_output=True, text=True,
                              env=os.environ | {"PATH": str(self.tools)})
        return done.returncode, (done.stdout + done.stderr).splitlines()

    def test_is_silent_and_ends_with_0_where_there_is_no_breach(self) -> None:
        self.assertEqual((0, []), self.run_tool(str(self.root)))

    def test_reports_breaches_and_ends_with_1(self) -> None:
        self.write("src/frame/one.h", "// TO" "DO\n")
        self.assertEqual((1, ["src/frame/one.h:1: work is done or it is not in the tree"]),
                         self.run_tool(str(self.root)))

    def test_refuses_unknown_options(self) -> None:
        self.assertEqual((2, ["structure: unknown option --fast"]), self.run_tool("--fast"))

    def test_refuses_a_folder_that_is_no_tree(self) -> None:
        shutil.rmtree(self.root / "src")
        self.assertEqual((2, [f"structure: no folder src in {self.root}"]), self.run_tool(str(self.root)))

    def test_says_which_tool_is_missing(self) -> None:
        for name in ("format", "tidy"):
            self.assertEqual((2, [f"structure: clang-{name} is not installed (scripts/setup lint)"]),
                             self.run_tool(f"--{name}", str(self.root)))

    def test_passes_findings_of_clang_format_on(self) -> None:
        self.stand_in("clang-format", CLANG_FORMAT)
        self.assertEqual((0, []), self.run_tool("--format", str(self.root)))
        self.write("src/frame/planted.cpp", "")
        self.assertEqual((1, ["src/frame/planted.cpp: fault"]), self.run_tool("--format", str(self.root)))

    def test_needs_a_build_for_clang_tidy(self) -> None:
        self.stand_in("clang-tidy", CLANG_TIDY)
        self.assertEqual((2, ["structure: no build/linux/compile_commands.json (cmake --preset linux)"]),
                         self.run_tool("--tidy", str(self.root)))
        self.built(f"{self.root}/tests/abi/planted.cpp", "/elsewhere/src/text/planted.cpp")
        self.assertEqual((2, [f"structure: build/linux builds nothing of {self.root}/src"]),
                         self.run_tool("--tidy", str(self.root)))

    def test_passes_findings_of_clang_tidy_on_once_for_a_source_that_is_built_twice(self) -> None:
        self.stand_in("clang-tidy", CLANG_TIDY)
        self.built(f"{self.root}/tests/abi/planted.cpp", f"{self.root}/src/text/one.cpp")
        self.assertEqual((0, []), self.run_tool("--tidy", str(self.root)))
        self.built(*[f"{self.root}/src/text/{name}.cpp" for name in ("planted", "one", "planted")])
        self.assertEqual((1, ["planted.cpp: fault"]), self.run_tool("--tidy", str(self.root)))
