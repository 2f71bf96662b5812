"""tools/coverage on a small tree, with substitutes for the compiler's tools."""

import json
import os
import shutil
import subprocess
import sys

from tests.countedFunction import counted
from tests.fakeProgram import TOOLS, FakeProgramTest

# A profile has the build id of its program in its first line, followed by the counts.
PROFDATA = """
    if sys.argv[1] == "show":
        say("Binary IDs:")
        say(open(sys.argv[3]).readline())
    else:  # merge -sparse -o DESTINATION SOURCE
        open(sys.argv[4], "w").write("".join(open(sys.argv[5]).readlines()[1:]))
"""
COV = """
    dump = open(os.environ["DUMP"]).read()
    if dump:
        print("warning: 2 functions have mismatched data", file=sys.stderr)
    if sys.argv[-1] == "-dump":
        print(dump, file=sys.stderr)
    counts = open(sys.argv[3]).read()
    if not counts:
        sys.exit("error: no coverage data found")
    say(counts)
"""
SOURCES = ("src/frame/one.cpp", "src/mordRev/src/one.cpp", "src/logging/one.cpp", "src/text/one.cpp",
           "src/native/chooseNativeX86.cpp", "src/native/chooseNativeX64.cpp")


class Command(FakeProgramTest):
    def setUp(self) -> None:
        super().setUp()
        self.tree = self.folder / "tree"
        self.build = self.tree / "build"
        (self.build / "profiles").mkdir(parents=True)
        (self.tree / "tools").mkdir()
        shutil.copy(TOOLS / "coverage", self.tree / "tools")
        shutil.copytree(TOOLS / "coverageCount", self.tree / "tools/coverageCount")
        (self.tree / "tools/coverageCount/unreached.txt").write_text("")
        self.program("bin/llvm-profdata-19", PROFDATA)
        self.program("bin/llvm-cov-19", COV)
        self.dump = self.folder / "dump"
        self.dump.write_text("")
        for file in SOURCES:
            (self.tree / file).parent.mkdir(parents=True, exist_ok=True)
            (self.tree / file).write_text("    if (one) {\n")
        self.built("oneTest", 1, *SOURCES[:4])
        self.built("native32Test", 2, SOURCES[4])
        self.built("native64Test", 3, SOURCES[5])
        self.built("otherTest", 4)

    def built(self, name: str, digit: int, *files: str, false: int = 1) -> None:
        """A program whose build id consists of one byte, and the profile of its run."""
        note = b"\x7fELF\x04\0\0\0\x14\0\0\0\x03\0\0\0GNU\0" + bytes([0x11 * digit]) * 20
        (self.build / name).write_bytes(note)
        (self.build / name).chmod(0o755)
        functions = [counted("one", f"{self.tree}/{file}", 1, false) for file in files]
        counts = json.dumps({"data": [{"functions": functions}]}) if functions else ""
        (self.build / f"profiles/{name}.profraw").write_text(str(digit) * 40 + "\n" + counts)

    def sees(self, code: int, *lines: str) -> None:
        """Checks the exit code, and that these lines are printed among others."""
        path = f"{self.folder}/bin:{os.environ['PATH']}"
        done = subprocess.run([sys.executable, self.tree / "tools/coverage", self.build], capture_output=True,
                              text=True, env=os.environ | {"PATH": path, "DUMP": str(self.dump)})
        printed = (done.stdout + done.stderr).splitlines()
        self.assertEqual(code, done.returncode, printed)
        for line in lines:
            self.assertIn(line, printed)

    def test_passes_a_tree_of_which_all_is_taken(self) -> None:
        self.sees(0)

    def test_fails_below_the_threshold(self) -> None:
        self.built("native64Test", 3, SOURCES[5], false=0)
        self.sees(1, "src/native/chooseNativeX64.cpp:1: never false (src/native, 64-bit caller, one): if (one) {",
                  "src/native, 64-bit caller: 50.00 % of the branches are taken, 100 % are required")

    def test_reads_the_exclusions_of_the_tree(self) -> None:
        self.built("native64Test", 3, SOURCES[5], false=0)
        (self.tree / "tools/coverageCount/unreached.txt").write_text(f"{SOURCES[5]} | if (one) {{ | 1 | it is so\n")
        self.sees(0)

    def test_accepts_a_function_without_counters_beside_the_same_with_them(self) -> None:
        self.dump.write_text("hash-mismatch: No profile record found for 'unused' with hash = 0x0\n")
        self.sees(0)

    def test_refuses_counts_that_belong_to_another_body(self) -> None:
        lost = "hash-mismatch: No profile record found for 'lost' with hash = 0x12"
        self.dump.write_text(lost + "\n")
        self.sees(2, lost)

    def test_refuses_a_profile_of_a_program_that_was_built_anew(self) -> None:
        (self.build / "native64Test").unlink()
        self.sees(2, f"coverage: {self.build}/profiles/native64Test.profraw is of a program that is not there any more")

    def test_refuses_tests_that_have_not_run(self) -> None:
        for profile in self.build.glob("profiles/*"):
            profile.unlink()
        self.sees(2, f"coverage: no profiles in {self.build}/profiles")

    def test_refuses_other_arguments(self) -> None:
        self.assertEqual(2, self.run_tool("coverage").returncode)
