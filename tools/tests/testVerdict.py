"""The limits of coverage: below, at and above the required share; exclusions."""

import tempfile
import unittest
from pathlib import Path

from coverageCount.branchCount import BranchCount
from coverageCount.exclusions import Exclusions
from coverageCount.thresholds import THRESHOLDS, Threshold
from coverageCount.verdict import HEADER, Verdict
from tests.countedFunction import counted

ROWS = {"src/frame": "src/frame/one.cpp", "src/mordRev": "src/mordRev/src/one.cpp",
        "src/logging": "src/logging/one.cpp", "src/text": "src/text/one.cpp",
        "src/native, 32-bit caller": "src/native/chooseNativeX86.cpp",
        "src/native, 64-bit caller": "src/native/chooseNativeX64.cpp"}
UNREACHED = "tools/coverageCount/unreached.txt"


def row(name: str, *columns: object) -> str:
    """A row of the table: branches, missed, excluded, taken, required, MC/DC, required."""
    widths = (9, 9, 9, 10, 10, 10, 10)
    return f"{name:28}" + "".join(f"{column!s:>{width}}" for column, width in zip(columns, widths, strict=True))


class Gates(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.count = BranchCount(self.root)
        for file in ROWS.values():
            self.write(file, "    if (one) {\n")
            self.add(counted("one", f"{self.root}/{file}", 1, 1))

    def write(self, file: str, text: str) -> None:
        (self.root / file).parent.mkdir(parents=True, exist_ok=True)
        (self.root / file).write_text(text)

    def add(self, *functions: dict) -> None:
        self.count.add(list(functions))

    def verdict(self, exclusions: str = "", thresholds: dict[str, Threshold] = THRESHOLDS) -> Verdict:
        return Verdict(self.root, self.count, Exclusions(exclusions), thresholds)

    def test_of_the_tree_are_those_that_the_documents_claim(self) -> None:
        self.assertEqual({**{name: (100, 100) for name in ROWS}, "src/platform": (None, None)}, THRESHOLDS)

    def test_pass_where_all_is_taken(self) -> None:
        verdict = self.verdict()
        self.assertEqual([], verdict.faults)
        self.assertEqual([HEADER, *(row(name, 2, 0, 0, "100.00%", "100%", "100.00%", "100%") for name in ROWS),
                          row("src/platform", 0, 0, 0, "0.00%", "-", "-", "-")], verdict.report)

    def test_fail_where_a_branch_of_a_folder_is_missed(self) -> None:
        for name, file in ROWS.items():
            with self.subTest(name):
                self.setUp()
                self.add(counted("rest", f"{self.root}/{file}", 0, 1))
                verdict = self.verdict()
                self.assertEqual([f"{name}: 75.00 % of the branches are taken, 100 % are required"], verdict.faults)
                self.assertEqual(f"{file}:1: never true ({name}, rest): if (one) {{", verdict.report[0])
                self.assertIn(row(name, 4, 1, 0, "75.00%", "100%", "100.00%", "100%"), verdict.report)

    def test_fail_where_a_condition_of_a_folder_is_not_shown(self) -> None:
        for name, file in ROWS.items():
            with self.subTest(name):
                self.setUp()
                self.add(counted("rest", f"{self.root}/{file}", 1, 1, (True, False, True)))
                verdict = self.verdict()
                self.assertEqual([f"{name}: 75.00 % of the conditions are shown to decide by themselves, "
                                  "100 % are required"], verdict.faults)
                self.assertEqual(f"{file}:1: condition 2 is not shown to decide by itself ({name}): if (one) {{",
                                 verdict.report[0])

    def test_of_less_than_all_fail_below_and_pass_at_and_above(self) -> None:
        self.add(counted("rest", f"{self.root}/src/frame/one.cpp", 1, 0, (True, True, False)))  # 75 % of either
        for share, faults in ((75.1, 2), (75, 0), (74.9, 0)):
            verdict = self.verdict(thresholds={"src/frame": Threshold(share, share)})
            self.assertEqual(faults, len(verdict.faults), share)

    def test_fail_for_a_folder_of_which_nothing_was_counted(self) -> None:
        self.count = BranchCount(self.root)
        self.add(*(counted("one", f"{self.root}/{file}", 1, 1) for file in ROWS.values()
                   if "text" not in file and "X64" not in file))
        self.assertEqual(["src/text: 0.00 % of the branches are taken, 100 % are required",
                          "src/native, 64-bit caller: 0.00 % of the branches are taken, 100 % are required"],
                         [fault for fault in self.verdict().faults if "required" in fault])

    def test_show_where_nothing_is_required_and_pass(self) -> None:
        self.add(counted("five", f"{self.root}/src/platform/one.cpp", 1, 0, (False,)))
        self.write("src/platform/one.cpp", "    if (one) {\n")
        verdict = self.verdict()
        self.assertEqual([], verdict.faults)
        self.assertIn(row("src/platform", 2, 1, 0, "50.00%", "-", "0.00%", "-"), verdict.report)

    # Exclusions

    def test_take_an_excluded_branch_as_taken(self) -> None:
        self.add(counted("rest", f"{self.root}/src/frame/one.cpp", 0, 1))
        verdict = self.verdict("# Comment\n\nsrc/frame/one.cpp | if (one) { | 1 | it is so\n")
        self.assertEqual([], verdict.faults)
        self.assertIn(row("src/frame", 4, 0, 1, "100.00%", "100%", "100.00%", "100%"), verdict.report)

    def test_refuse_an_exclusion_for_one_branch_too_many(self) -> None:
        self.add(counted("rest", f"{self.root}/src/frame/one.cpp", 0, 1))
        self.assertEqual([f"{UNREACHED}: taken, or not there: src/frame/one.cpp | if (one) {{"],
                         self.verdict("src/frame/one.cpp | if (one) { | 2 | it is so\n").faults)

    def test_refuse_an_exclusion_for_a_branch_that_is_taken(self) -> None:
        self.assertEqual([f"{UNREACHED}: taken, or not there: src/frame/one.cpp | if (one) {{"],
                         self.verdict("src/frame/one.cpp | if (one) { | 1 | it is so\n").faults)

    def test_refuse_an_exclusion_for_another_line(self) -> None:
        self.add(counted("rest", f"{self.root}/src/frame/one.cpp", 0, 1))
        self.assertEqual([f"{UNREACHED}: taken, or not there: src/frame/one.cpp | if (other) {{",
                          "src/frame: 75.00 % of the branches are taken, 100 % are required"],
                         self.verdict("src/frame/one.cpp | if (other) { | 1 | it is so\n").faults)

    def test_refuse_a_source_that_no_program_has(self) -> None:
        self.write("src/frame/two.cpp", "")
        self.assertEqual(["src/frame/two.cpp: no program that was run has it"], self.verdict().faults)

    def test_accept_a_source_that_is_excluded(self) -> None:
        self.write("src/frame/two.cpp", "")
        verdict = self.verdict("src/frame/two.cpp | * | * | for another system\n")
        self.assertEqual([], verdict.faults)
        self.assertEqual("not counted: src/frame/two.cpp: for another system", verdict.report[-1])

    def test_refuse_an_exclusion_for_a_source_that_is_counted_or_gone(self) -> None:
        for file in ("src/frame/one.cpp", "src/frame/gone.cpp"):
            self.assertEqual([f"{UNREACHED}: counted, or not there: {file}"],
                             self.verdict(f"{file} | * | * | for another system\n").faults)
