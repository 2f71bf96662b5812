"""Starts under Wine, with a substitute that fails as Wine and as programs do."""

import os

from testRuns import wineStart
from tests.fakeProgram import FakeProgramTest

MAPPING = "err:virtual:virtual_alloc_first_teb wine: failed to map the shared user data: c0000018"
START_PROGRAM = ("Application could not be started, or no application associated with the specified file.\n"
                 "ShellExecuteEx failed: Internal error.\n")
UNHANDLED = "wine: Unhandled page fault on write access to 00000000 at address 004015B8 (thread 0128)"


class WineStart(FakeProgramTest):
    def sees(self, code: int, starts: int, output: str, told: list[str], *plan: str) -> None:
        """Runs a substitute for Wine whose n-th start executes the n-th line of the plan; the last line repeats."""
        starter = self.program("wine", f"""
            with open({str(self.folder / "starts")!r}, "a+") as file:
                file.write(" ".join(sys.argv[1:]) + "\\n")
                file.seek(0)
                n = len(file.readlines())
            def err(text): print(text, file=sys.stderr, flush=True)
            plan = {list(plan)!r}
            exec(plan[min(n, len(plan)) - 1])
        """)
        seen, errors, words = bytearray(), bytearray(), []
        ended = wineStart.start(["some.exe", "an argument"], dict(os.environ), lambda: seen.extend, errors.extend,
                                words.append, starter)
        self.assertEqual((code, output, told), (ended.code, seen.decode(), words))
        self.assertEqual(["some.exe an argument"] * starts, (self.folder / "starts").read_text().splitlines())
        (self.folder / "starts").unlink()

    SILENT = "the program was silent, and so was Wine: its own start-up ended it, or a DLL is missing"

    @staticmethod
    def failed(attempt: int) -> str:
        return f"start {attempt} of some.exe failed before the program began, exit code 1"

    def test_that_succeeds_is_not_repeated(self) -> None:
        self.sees(0, 1, "passed\n", [], "say('passed')")

    def test_of_a_test_that_fails_is_not_repeated(self) -> None:
        self.sees(1, 1, "failed\n", ["exit code 1"], "say('failed'); sys.exit(1)", "say('passed')")

    def test_that_wine_cannot_map_is_repeated_and_told(self) -> None:
        self.sees(0, 2, "passed\n", [self.failed(1)], f"err({MAPPING!r}); sys.exit(1)", "say('passed')")

    def test_that_the_start_program_gives_up_is_repeated_and_told(self) -> None:
        self.sees(0, 2, START_PROGRAM + "\npassed\n", [self.failed(1)],
                  f"err({MAPPING!r}); err({MAPPING!r}); say({START_PROGRAM!r}); sys.exit(1)", "say('passed')")

    def test_is_repeated_twice_at_most(self) -> None:
        self.sees(1, 3, "", [self.failed(1), self.failed(2), self.failed(3), "exit code 1"],
                  f"err({MAPPING!r}); sys.exit(1)")

    def test_of_a_test_that_fails_at_its_second_start_is_not_repeated(self) -> None:
        self.sees(1, 2, "failed\n", [self.failed(1), "exit code 1"], f"err({MAPPING!r}); sys.exit(1)",
                  "say('failed'); sys.exit(1)", "say('passed')")

    def test_that_wine_repeated_itself_is_not_repeated(self) -> None:
        self.sees(0, 1, "passed\n", [], f"err({MAPPING!r}); say('passed')")
        self.sees(1, 1, "failed\n", ["exit code 1"], f"err({MAPPING!r}); say('failed'); sys.exit(1)")

    def test_that_ends_in_silence_is_not_repeated(self) -> None:
        """A static initialiser that ends the program, or a missing DLL."""
        for code, words in ((1, "exit code 1"), (3, "exit code 3 (under Wine that may be abort())"),
                            (5, "exit code 5 (under Wine that may be 0xC0000005, access violation)"),
                            (53, "exit code 53 (under Wine that may be 0xC0000135, a program or DLL is missing)")):
            self.sees(code, 1, "", [words, self.SILENT], f"sys.exit({code})", "say('passed')")

    def test_of_a_static_initialiser_that_crashes_is_not_repeated(self) -> None:
        self.sees(5, 1, "", ["exit code 5 (under Wine that may be 0xC0000005, access violation)"],
                  f"err({UNHANDLED!r}); sys.exit(5)", "say('passed')")

    def test_of_a_program_that_dies_behind_its_first_word_is_not_repeated(self) -> None:
        self.sees(9, 1, "begun\n", ["exit code 9 (under Wine that may be 0xC0000409, fast failure)"],
                  "say('begun'); sys.exit(9)", "say('passed')")

    def test_that_a_signal_ends_is_not_repeated(self) -> None:
        self.sees(-9, 1, "", ["exit code -9", self.SILENT], "os.kill(os.getpid(), 9)", "say('passed')")

    def test_has_the_channel_on_that_says_why_wine_fails(self) -> None:
        os.environ.pop("WINEDEBUG", None)
        self.sees(0, 1, "-all,err+virtual\n", [], "say(os.environ['WINEDEBUG'])")

    def test_in_silence_that_calls_itself_success_is_told(self) -> None:
        self.sees(0, 1, "", [self.SILENT], "sys.exit(0)")
