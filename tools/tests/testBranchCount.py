"""The counts that are added up over programs, and those that stay separate."""

import re
import unittest
from pathlib import Path

from coverageCount.branchCount import Branch, BranchCount, Condition, Place
from coverageCount.profiles import CannotCount
from coverageCount.thresholds import CALLERS
from tests.countedFunction import counted, logs

CALLER_32, CALLER_64 = "src/native/chooseNativeX86.cpp", "src/native/chooseNativeX64.cpp"
MACROS = "/tree/src/logging/logMacros.h"


class Counting(unittest.TestCase):
    def count(self, *programs: list[dict]) -> BranchCount:
        count = BranchCount(Path("/tree"))
        for functions in programs:
            count.add(functions)
        return count

    def missed(self, *programs: list[dict]) -> list[tuple[str, str, bool]]:
        """Row, function and outcome of each branch that was never taken."""
        count = self.count(*programs)
        return sorted((branch.place.row, branch.place.function, branch.outcome)
                      for branch, times in count.taken.items() if times == 0)

    def test_has_a_branch_for_each_outcome(self) -> None:
        place = Place("src/frame", "src/frame/one.cpp", ((1, 5),), "one")
        self.assertEqual({Branch(place, True): 3, Branch(place, False): 0},
                         dict(self.count([counted("one", "/tree/src/frame/one.cpp", 3, 0)]).taken))

    def test_adds_the_branches_of_two_programs(self) -> None:
        file = "/tree/src/frame/one.cpp"
        self.assertEqual([], self.missed([counted("same", file, 1, 0)], [counted("same", file, 0, 1)]))

    def test_keeps_the_instantiations_of_a_template_in_a_source_apart(self) -> None:
        file = "/tree/src/frame/one.cpp"
        self.assertEqual([("src/frame", "another", True), ("src/frame", "same", False)],
                         self.missed([counted("same", file, 1, 0)], [counted("another", file, 0, 1)]))

    def test_adds_those_of_a_header(self) -> None:
        file = "/tree/src/frame/one.h"
        self.assertEqual([], self.missed([counted("same", file, 1, 0), counted("another", file, 0, 1)]))

    def test_takes_local_functions_by_their_name_without_the_file(self) -> None:
        file = "/tree/src/frame/one.cpp"
        self.assertEqual([], self.missed([counted("one.cpp;local", file, 1, 0)],
                                         [counted("src/one.cpp:local", file, 0, 1)]))

    def test_takes_a_log_site_as_a_condition_where_it_is_written(self) -> None:
        count = self.count([logs("one", "/tree/src/text/one.cpp", MACROS, 0, 1),
                            logs("two", "/tree/src/frame/one.cpp", MACROS, 1, 1)])
        self.assertEqual({("src/text", "src/text/one.cpp", 2), ("src/frame", "src/frame/one.cpp", 2)},
                         {(place.row, place.file, place.line) for place, _ in count.taken})

    def test_counts_native_for_the_caller_that_a_program_has(self) -> None:
        self.assertEqual([("src/native, 64-bit caller", "six", False)],
                         self.missed([counted("six", f"/tree/{CALLER_32}", 1, 1)],
                                     [counted("six", f"/tree/{CALLER_64}", 1, 0)]))

    def test_knows_a_caller_by_any_source_that_it_alone_has(self) -> None:
        self.assertEqual([("src/native, 32-bit caller", "one", False)],
                         self.missed([counted("one", "/tree/src/native/gateModules.cpp", 1, 0)]))

    def test_counts_native_for_both_callers_where_a_program_has_neither(self) -> None:
        self.assertEqual([("src/native, 32-bit caller", "one", False), ("src/native, 64-bit caller", "one", False)],
                         self.missed([counted("one", "/tree/src/native/path.cpp", 1, 0)]))

    def test_refuses_a_program_with_both_callers(self) -> None:
        with self.assertRaisesRegex(CannotCount, "either width"):
            self.count([counted("six", f"/tree/{CALLER_32}", 1, 1), counted("six", f"/tree/{CALLER_64}", 1, 1)])

    def test_takes_a_condition_as_shown_when_one_program_shows_it(self) -> None:
        file = "/tree/src/frame/one.cpp"
        place = Place("src/frame", "src/frame/one.cpp", ((1, 5),), "one")
        count = self.count([counted("one", file, 1, 1, (True, False, False))],
                           [counted("one", file, 1, 1, (False, True, False))])
        self.assertEqual({Condition(place, 1): True, Condition(place, 2): True, Condition(place, 3): False},
                         count.decides)

    def test_keeps_the_files_of_all_programs(self) -> None:
        count = self.count([counted("one", "/tree/src/frame/one.cpp", 1, 1)],
                           [counted("two", "/tree/src/text/t.h", 1, 1)])
        self.assertEqual({"src/frame/one.cpp", "src/text/t.h"}, count.files)


class Callers(unittest.TestCase):
    def test_are_told_apart_by_the_sources_that_the_build_gives_to_each(self) -> None:
        """src/CMakeLists.txt lists them in native32Sources and native64Sources."""
        text = (Path(__file__).resolve().parents[2] / "src/CMakeLists.txt").read_text()
        for name, row in (("32", "src/native, 32-bit caller"), ("64", "src/native, 64-bit caller")):
            listed = re.search(rf"set\(native{name}Sources\s([^)]*)\)", text)
            assert listed
            self.assertEqual({f"src/{file}" for file in listed[1].split()},
                             {file for file, its_row in CALLERS.items() if its_row == row})
