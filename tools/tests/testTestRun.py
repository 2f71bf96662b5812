"""tools/testRun with programs that pass, fail and end abnormally."""

import subprocess
import time

from tests.fakeProgram import FakeProgramTest
from tests.testGtestOutput import ONE_SKIPPED, PASSED

HALF = PASSED[:PASSED.index("[ RUN      ] Suite.Two")]


class TestRun(FakeProgramTest):
    def sees(self, code: int, *faults: str, done: subprocess.CompletedProcess[str]) -> None:
        self.assertEqual([f"testRun: {fault}" for fault in faults], done.stderr.splitlines())
        self.assertEqual(code, done.returncode)

    def test_passes_what_passed_and_its_output_on(self) -> None:
        done = self.run_tool("testRun", self.program("test", f"say({PASSED!r}[:-1]); print('x', file=sys.stderr)"))
        self.assertEqual((0, PASSED, "x\n"), (done.returncode, done.stdout, done.stderr))

    def test_hands_the_arguments_over(self) -> None:
        program = self.program("test", f"say({PASSED!r}); sys.exit(sys.argv[1:] != ['--a=b c', '--wine'])")
        self.sees(0, done=self.run_tool("testRun", program, "--a=b c", "--wine"))

    def test_fails_a_program_that_ends_half_way_with_0(self) -> None:
        self.sees(1, "2 cases were selected, and the program ended before the last one did",
                  done=self.run_tool("testRun", self.program("test", f"say({HALF!r}); os._exit(0)")))

    def test_fails_a_program_that_is_silent(self) -> None:
        self.sees(1, "no test began: the output has no line '[==========] Running N tests'",
                  done=self.run_tool("testRun", self.program("test", "")))

    def test_fails_a_program_that_ends_with_another_code_though_its_output_is_fine(self) -> None:
        program = self.program("test", f"say({PASSED!r}); sys.exit(7)")
        self.sees(7, "exit code 7", done=self.run_tool("testRun", program))

    def test_fails_a_program_that_a_signal_ends(self) -> None:
        program = self.program("test", f"say({PASSED!r}); os.kill(os.getpid(), 6)")
        self.sees(134, "ended by signal 6", done=self.run_tool("testRun", program))

    def test_fails_a_program_that_is_not_there(self) -> None:
        missing = str(self.folder / "missing")
        self.sees(127, f"{missing} cannot be started: No such file or directory",
                  done=self.run_tool("testRun", missing))

    def test_fails_skipped_cases_unless_they_may_be(self) -> None:
        program = self.program("test", f"say({ONE_SKIPPED!r})")
        self.sees(1, "Suite.Two was skipped", "2 cases were selected, 2 ran, 1 passed",
                  done=self.run_tool("testRun", program))
        self.sees(0, done=self.run_tool("testRun", "--allow", "Suite.Two", program))

    def test_passes_lists_on(self) -> None:
        program = self.program("test", "say('Suite.\\n  One' if '--gtest_list_tests' in sys.argv else '')")
        done = self.run_tool("testRun", program, "--gtest_list_tests")
        self.assertEqual((0, "Suite.\n  One\n", ""), (done.returncode, done.stdout, done.stderr))

    def test_fails_a_list_that_is_empty_or_ends_with_another_code(self) -> None:
        empty = self.program("empty", "")
        self.sees(1, "the program lists no test", done=self.run_tool("testRun", empty, "--gtest_list_tests"))
        failing = self.program("failing", "say('Suite.\\n  One'); sys.exit(3)")
        self.sees(3, "exit code 3", done=self.run_tool("testRun", failing, "--gtest_list_tests"))

    def test_takes_settings_away_that_would_select_other_cases(self) -> None:
        program = self.program("test", f"say({PASSED!r}); sys.exit('GTEST_FILTER' in os.environ)")
        self.sees(0, done=self.run_tool("testRun", program, env={"GTEST_FILTER": "None"}))

    def test_goes_by_the_exit_code_of_plain_programs(self) -> None:
        self.sees(0, done=self.run_tool("testRun", "--plain", self.program("test", "")))
        self.sees(4, "exit code 4", done=self.run_tool("testRun", "--plain", self.program("test", "sys.exit(4)")))

    def test_fails_a_program_that_leaves_a_process_behind(self) -> None:
        program = self.program("test", f"""
            say({PASSED!r})
            if os.fork() == 0:
                import time
                os.close(2)
                time.sleep(20)
        """)
        began = time.monotonic()
        self.sees(1, "a process that the program started still holds its output",
                  done=self.run_tool("testRun", program))
        self.assertLess(time.monotonic() - began, 15)

    def test_refuses_unknown_options(self) -> None:
        for arguments in (["--fast", "x"], ["--allow"], []):
            self.assertEqual(2, self.run_tool("testRun", *arguments).returncode)
