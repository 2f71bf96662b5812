"""tools/soak with a program that stands in for the comparison."""

import json
import os
import shutil
import signal
import subprocess
import sys
import time

from soakRuns.piece import judge
from tests.fakeProgram import TOOLS, FakeProgramTest

PASSES = "say(f'seed {sys.argv[1]}: {sys.argv[2]} cases, 0 differences, 3 s')\n"


class Judge(FakeProgramTest):
    def test_passes_the_result_of_all_cases(self) -> None:
        self.assertEqual("", judge(7, 20, 0, "seed 7: 20 cases, 0 differences, 1 s\n").fault)

    def test_fails_another_exit_code(self) -> None:
        result = judge(7, 20, 1, "the case\nseed 7: 20 cases, 2 differences, 1 s\n")
        self.assertEqual((2, "exit code 1"), (result.differences, result.fault))
        self.assertEqual("ended by signal 11", judge(7, 20, -11, "").fault)

    def test_fails_an_end_without_the_result_line(self) -> None:
        for output in ("", "working\n", "seed 7: 20 cases, 0 differences, 1 s\nand on\n", "seed 7: 20 cases, 0 diff"):
            self.assertEqual("it ended without its result line", judge(7, 20, 0, output).fault)

    def test_fails_the_result_of_other_cases(self) -> None:
        for output in ("seed 8: 20 cases, 0 differences, 1 s\n", "seed 7: 19 cases, 0 differences, 1 s\n"):
            self.assertEqual("its result is not that of seed 7 with 20 cases", judge(7, 20, 0, output).fault)

    def test_fails_differences_that_call_themselves_success(self) -> None:
        self.assertEqual("1 differences, and exit code 0",
                         judge(7, 20, 0, "seed 7: 20 cases, 1 differences, 1 s\n").fault)


class Soak(FakeProgramTest):
    def setUp(self) -> None:
        super().setUp()
        self.tree = self.folder / "tree"
        (self.tree / "tools").mkdir(parents=True)
        shutil.copy(TOOLS / "soak", self.tree / "tools")
        for part in ("soakRuns", "runRecords"):
            shutil.copytree(TOOLS / part, self.tree / "tools" / part, ignore=shutil.ignore_patterns("__pycache__"))

    def command(self, code: str, *arguments: str) -> tuple[list[str], dict[str, str]]:
        program = self.program("tree/build/linux/tests/modelSoak", code)
        environment = os.environ | {"PROGRAM": program, "JOBS": "2", "PIECE": "10", "PYTHONDONTWRITEBYTECODE": "1"}
        return [sys.executable, str(self.tree / "tools/soak"), *arguments], environment

    def soak(self, code: str, *arguments: str) -> subprocess.CompletedProcess[str]:
        command, environment = self.command(code, *arguments)
        return subprocess.run(command, env=environment, capture_output=True, text=True, timeout=60)

    def git(self, *arguments: str) -> str:
        return subprocess.run(["git", "-c", "user.name=n", "-c", "user.email=e", *arguments], cwd=self.tree, check=True,
                              capture_output=True, text=True).stdout.strip()

    def test_deals_the_cases_out_and_says_how_far_it_came(self) -> None:
        done = self.soak(PASSES, "25", "3")
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertRegex(done.stdout, "\n".join([
            "^seed 3: 10 cases, 0 differences, 3 s", "seed 4: 10 cases, 0 differences, 3 s",
            r"20 of 25 cases, 0 differences, \d+ s; continue with SEED=5", "seed 5: 5 cases, 0 differences, 3 s",
            r"25 of 25 cases, 0 differences, \d+ s; continue with SEED=6\n$"]))

    def test_deals_few_cases_out_too(self) -> None:
        done = self.soak(PASSES, "4")
        self.assertIn("seed 1: 2 cases, 0 differences, 3 s\nseed 2: 2 cases", done.stdout)

    def test_fails_for_a_difference_and_goes_on(self) -> None:
        done = self.soak("""
            differs = sys.argv[1] == "1"
            say(f"seed {sys.argv[1]}: {sys.argv[2]} cases, {2 if differs else 0} differences, 3 s")
            sys.exit(differs)
        """, "30")
        self.assertEqual(1, done.returncode)
        self.assertRegex(done.stdout, "30 of 30 cases, 2 differences")
        self.assertEqual(["the piece of seed 1 failed: exit code 1", "1 pieces failed"], done.stderr.splitlines())

    def test_fails_for_a_piece_that_ends_early_with_0(self) -> None:
        done = self.soak("say('working'); sys.exit(0)", "5")
        self.assertEqual(1, done.returncode)
        self.assertIn("the piece of seed 1 failed: it ended without its result line", done.stderr)

    def test_ends_its_pieces_when_it_is_stopped(self) -> None:
        pids = self.folder / "pids"
        command, environment = self.command(f"""
            import time
            open({str(pids)!r}, "a").write(f"{{os.getpid()}}\\n")
            time.sleep(60)
        """, "20")
        with subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as soak:
            deadline = time.monotonic() + 30
            while not pids.exists() or len(pids.read_text().splitlines()) < 2:
                self.assertLess(time.monotonic(), deadline)
                time.sleep(0.05)
            soak.send_signal(signal.SIGTERM)
            self.assertEqual(130, soak.wait(30))
        for pid in map(int, pids.read_text().split()):
            with self.assertRaises(ProcessLookupError):
                os.kill(pid, 0)

    def test_records_what_ran_when_it_is_asked_to(self) -> None:
        self.program("tree/build/linux/tests/modelSoak", PASSES)
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-qm", "first")
        records = self.tree / "docs/runs/soak.json"
        self.assertEqual(0, self.soak(PASSES, "25", "3").returncode)
        self.assertFalse(records.exists())
        for _ in range(2):  # the record of the first run is no change that forbids the second
            done = self.soak(PASSES, "--record", "25", "3")
            self.assertEqual((0, ""), (done.returncode, done.stderr))
        entries = json.loads(records.read_text())
        self.assertEqual(2, len(entries))
        self.assertRegex(entries[0].pop("date"), r"^\d{4}-\d\d-\d\d$")
        self.assertEqual({"preset": "linux", "commit": self.git("rev-parse", "--short", "HEAD"), "library": "none",
                          "firstSeed": 3, "lastSeed": 5, "casesOfASeed": 10, "cases": 25, "differences": 0,
                          "failedPieces": 0}, entries[0])

    def test_records_nothing_of_a_tree_with_changes(self) -> None:
        self.git("init", "-q")
        self.git("commit", "-q", "--allow-empty", "-m", "first")
        done = self.soak(PASSES, "--record", "25")
        self.assertEqual(2, done.returncode)
        self.assertRegex(done.stderr, r"^soak: a record needs a tree without changes, not \w+\+$")

    def test_refuses_other_arguments(self) -> None:
        for arguments in (["many"], ["1", "2", "3"], ["--fast"]):
            self.assertEqual(2, self.soak(PASSES, *arguments).returncode)
