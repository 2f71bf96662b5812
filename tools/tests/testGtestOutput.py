"""The output that counts as a passed run."""

import unittest

from testRuns.gtestOutput import GtestOutput, faults_of_listing

PASSED = """Running main() from gtest_main.cc
[==========] Running 2 tests from 1 test suite.
[----------] Global test environment set-up.
[ RUN      ] Suite.One
[       OK ] Suite.One (0 ms)
[ RUN      ] Suite.Two
[       OK ] Suite.Two (0 ms)
[----------] Global test environment tear-down
[==========] 2 tests from 1 test suite ran. (0 ms total)
[  PASSED  ] 2 tests.
"""
ONE_SKIPPED = PASSED.replace("[       OK ] Suite.Two", "[  SKIPPED ] Suite.Two").replace(
    "[  PASSED  ] 2 tests.\n", "[  PASSED  ] 1 test.\n[  SKIPPED ] 1 test, listed below:\n[  SKIPPED ] Suite.Two\n")


class Output(unittest.TestCase):
    def faults(self, text: str, allowed: set[str] = frozenset(), piece: int = 1 << 20) -> list[str]:
        output = GtestOutput()
        data = text.encode()
        for begin in range(0, len(data), piece):
            output.take(data[begin:begin + piece])
        return output.faults(allowed)

    def test_of_a_passed_run_has_no_fault(self) -> None:
        self.assertEqual([], self.faults(PASSED))

    def test_may_come_in_any_pieces(self) -> None:
        for piece in (1, 7, 100):
            self.assertEqual([], self.faults(PASSED, piece=piece))

    def test_may_have_the_line_ends_of_windows(self) -> None:
        self.assertEqual([], self.faults(PASSED.replace("\n", "\r\n")))

    def test_may_end_without_a_line_end(self) -> None:
        self.assertEqual([], self.faults(PASSED.rstrip("\n")))

    def test_of_a_program_that_ends_within_a_case_is_faulty(self) -> None:
        self.assertEqual(["2 cases were selected, and the program ended before the last one did"],
                         self.faults(PASSED[:PASSED.index("[ RUN      ] Suite.Two")]))

    def test_of_a_program_that_ends_behind_the_last_case_is_faulty(self) -> None:
        self.assertEqual(["the output has no result line '[  PASSED  ] N tests.'"],
                         self.faults(PASSED[:PASSED.index("[  PASSED  ]")]))

    def test_in_which_a_case_prints_the_result_line_is_faulty(self) -> None:
        forged = PASSED[:PASSED.index("[ RUN      ] Suite.Two")] + "[  PASSED  ] 2 tests.\n"
        self.assertEqual(["2 cases were selected, and the program ended before the last one did"], self.faults(forged))

    def test_in_which_a_case_prints_the_result_line_and_the_last_one_is_missing_is_faulty(self) -> None:
        result = "[  PASSED  ] 2 tests."
        forged = PASSED.replace(result + "\n", "").replace("[ RUN      ] Suite.Two", result)
        self.assertEqual(["the output has no result line '[  PASSED  ] N tests.'"], self.faults(forged))

    def test_with_fewer_passed_than_selected_is_faulty(self) -> None:
        self.assertEqual(["2 cases were selected, 2 ran, 1 passed"],
                         self.faults(PASSED.replace("[  PASSED  ] 2 tests.", "[  PASSED  ] 1 test.")))

    def test_with_fewer_ran_than_selected_is_faulty(self) -> None:
        self.assertEqual(["3 cases were selected, 2 ran, 2 passed"],
                         self.faults(PASSED.replace("Running 2 tests", "Running 3 tests")))

    def test_with_fewer_ended_than_passed_is_faulty(self) -> None:
        self.assertEqual(["2 cases were selected, 1 ran, 2 passed"],
                         self.faults(PASSED.replace("2 tests from 1 test suite ran", "1 test from 1 test suite ran")))

    def test_without_a_case_is_faulty(self) -> None:
        self.assertEqual(["no case was selected"], self.faults(PASSED.replace("2 tests", "0 tests")))

    def test_of_another_program_is_faulty(self) -> None:
        for text in ("", "hello\n", "[  PASSED  ] 2 tests.\n"):
            self.assertEqual(["no test began: the output has no line '[==========] Running N tests'"],
                             self.faults(text))

    def test_with_a_skipped_case_is_faulty_unless_it_may_be(self) -> None:
        self.assertEqual(["Suite.Two was skipped", "2 cases were selected, 2 ran, 1 passed"], self.faults(ONE_SKIPPED))
        self.assertEqual([], self.faults(ONE_SKIPPED, {"Suite.Two"}))
        self.assertNotEqual([], self.faults(ONE_SKIPPED, {"Suite.One"}))

    def test_with_disabled_cases_is_faulty_unless_they_may_be(self) -> None:
        disabled = PASSED + "\n  YOU HAVE 1 DISABLED TEST\n\n"
        self.assertEqual(["1 cases are disabled"], self.faults(disabled))
        self.assertEqual([], self.faults(disabled, {"Suite.DISABLED" "_Three"}))
        self.assertEqual(["1 cases are disabled"], self.faults(disabled, {"Suite.Three"}))

    def test_of_repeated_runs_has_to_be_that_of_a_passed_run_each_time(self) -> None:
        self.assertEqual([], self.faults(PASSED + PASSED))
        failed = PASSED.replace("[  PASSED  ] 2 tests.", "[  PASSED  ] 1 test.")
        self.assertEqual(["2 cases were selected, 2 ran, 1 passed"], self.faults(failed + PASSED))


class Listing(unittest.TestCase):
    def test_of_cases_has_no_fault(self) -> None:
        self.assertEqual([], faults_of_listing(b"Running main() from x\nSuite.\n  One\n  Two # comment\n", set()))

    def test_without_cases_is_faulty(self) -> None:
        self.assertEqual(["the program lists no test"], faults_of_listing(b"Running main() from x\n", set()))

    def test_with_a_disabled_case_is_faulty_unless_it_may_be(self) -> None:
        listing = b"Suite.\n  One\n  DISABLED" b"_Two\n"
        self.assertEqual(["Suite.DISABLED" "_Two is disabled"], faults_of_listing(listing, set()))
        self.assertEqual([], faults_of_listing(listing, {"Suite.DISABLED" "_Two"}))
