"""tools/proof with a program that takes the place of the comparison, and the count of the combinations."""

import json
import os
import shutil
import subprocess
import sys

from proofRuns.scope import size
from tests.fakeProgram import TOOLS, FakeProgramTest

PASSES = f"""
    sys.path.insert(0, {str(TOOLS)!r})
    from proofRuns.scope import size
    rules, share, shares = map(int, sys.argv[1:])
    one = size(rules, share, shares)
    result = f"rules {{rules}}, share {{share}} of {{shares}}: {{one.combinations}} combinations, {{one.runs}} runs"
"""


class Size(FakeProgramTest):
    def test_counts_one_and_two_rules_as_by_hand(self) -> None:
        self.assertEqual((8 * (432 + 1152 + 144 + 216 * 12), 720 * 8 * 12 * 3), size(1, 0, 1))
        self.assertEqual((44 * (432 + 1152 + 144 + 216 * 68), 720 * 44 * 68 * 3), size(2, 0, 1))

    def test_shares_add_up(self) -> None:
        for rules in (1, 2, 3):
            shares = [size(rules, share, 8) for share in range(8)]
            self.assertEqual(size(rules, 0, 1), tuple(map(sum, zip(*shares))))


class Proof(FakeProgramTest):
    def setUp(self) -> None:
        super().setUp()
        self.tree = self.folder / "tree"
        (self.tree / "tools").mkdir(parents=True)
        shutil.copy(TOOLS / "proof", self.tree / "tools")
        for part in ("proofRuns", "runRecords"):
            shutil.copytree(TOOLS / part, self.tree / "tools" / part, ignore=shutil.ignore_patterns("__pycache__"))

    def proof(self, code: str, *arguments: str) -> subprocess.CompletedProcess[str]:
        self.program("tree/build/linux/tests/modelProof", code)
        environment = os.environ | {"JOBS": "4", "PYTHONDONTWRITEBYTECODE": "1"}
        return subprocess.run([sys.executable, str(self.tree / "tools/proof"), *arguments], env=environment,
                              capture_output=True, text=True, timeout=120)

    def test_passes_when_every_share_reports_its_combinations(self) -> None:
        done = self.proof(PASSES + "    say(result + ', 0 differences, 1 s')\n")
        self.assertEqual(0, done.returncode, done.stdout + done.stderr)
        self.assertRegex(done.stdout, r"\nlinux: 327663360 combinations in 33353856 runs, 0 processes failed, \d+ s\n$")

    def test_fails_when_a_process_ends_early_or_differs(self) -> None:
        for code in ("    say(result + ', 0 differences, 1 s' if share else 'working')\n",
                     "    say(result + f', {int(share == 3)} differences, 1 s')\n",
                     "    say(result.replace('1', '2') + ', 0 differences, 1 s')\n",
                     "    say(result + ', 0 differences, 1 s'); sys.exit(share == 7)\n"):
            done = self.proof(PASSES + code)
            self.assertEqual(1, done.returncode, code)
            self.assertIn("failed: ", done.stdout)

    def test_records_a_tree_without_changes_alone(self) -> None:
        code = PASSES + "    say(result + ', 0 differences, 1 s')\n"
        git = ["git", "-c", "user.name=n", "-c", "user.email=e"]
        subprocess.run([*git, "init", "-q"], cwd=self.tree, check=True)
        subprocess.run([*git, "commit", "-q", "--allow-empty", "-m", "first"], cwd=self.tree, check=True)
        self.assertEqual(2, self.proof(code, "--record").returncode)
        subprocess.run([*git, "add", "."], cwd=self.tree, check=True)
        subprocess.run([*git, "commit", "-q", "-m", "second"], cwd=self.tree, check=True)
        done = self.proof(code, "--record")
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        entry = json.loads((self.tree / "docs/runs/proof.json").read_text())[0]
        self.assertEqual(("linux", "none", 3, 327663360, 33353856, 0),
                         tuple(entry[key] for key in ("preset", "library", "mostRules", "combinations", "runs",
                                                      "failedProcesses")))

    def test_refuses_other_arguments(self) -> None:
        for arguments in (["3"], ["--preset"], ["--preset", "none"]):
            self.assertEqual(2, self.proof(PASSES, *arguments).returncode)
