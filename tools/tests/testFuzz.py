"""tools/fuzz with programs in place of the fuzzers."""

import json
import os
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

from tests.fakeProgram import TOOLS, FakeProgramTest

# Claims to run the number of inputs that it is asked for, or 1,000 in the number of seconds.
ENGINE = """
    options = dict(argument[1:].split("=", 1) for argument in sys.argv[1:] if argument.startswith("-"))
    runs, seconds = int(options.get("runs", 1000)), int(options.get("max_total_time", 3))
    say("INFO: Seed: 4711")
    def end(runs=runs, seconds=seconds):
        say(f"Done {runs} runs in {seconds} second(s)")
        say(f"stat::number_of_executed_units: {runs}")
        say("stat::average_exec_per_sec: 40")
        say("stat::new_units_added: 2")
"""
CRASH = ENGINE + """
    open(options["artifact_prefix"] + "crash-1", "w")
    say("==1==ERROR: AddressSanitizer: heap-buffer-overflow")
    say("stat::number_of_executed_units: 77")
    sys.exit(1)
"""


class Fuzz(FakeProgramTest):
    def setUp(self) -> None:
        super().setUp()
        self.tree = self.folder / "tree"
        (self.tree / "tools").mkdir(parents=True)
        shutil.copy(TOOLS / "fuzz", self.tree / "tools")
        for part in ("fuzzRuns", "runRecords"):
            shutil.copytree(TOOLS / part, self.tree / "tools" / part, ignore=shutil.ignore_patterns("__pycache__"))
        (self.tree / ".gitignore").write_text("/build/\n")

    def engine(self, target: str, code: str = ENGINE + "    end()\n", preset: str = "linux-fuzz") -> None:
        self.program(f"tree/build/{preset}/fuzz/{target}", code)

    def command(self, *arguments: str) -> list[str]:
        return [sys.executable, str(self.tree / "tools/fuzz"), *arguments]

    def fuzz(self, *arguments: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run(self.command(*arguments), env=os.environ | {"PYTHONDONTWRITEBYTECODE": "1"},
                              capture_output=True, text=True, timeout=60)

    def counts(self) -> list[list[str]]:
        """The lines of the counts: preset, target, executions, result."""
        lines = [line.split() for line in (self.tree / "build/fuzz/counts").read_text().splitlines()]
        return [[fields[1], fields[2], fields[4], fields[6]] for fields in lines]

    def git(self, *arguments: str) -> str:
        return subprocess.run(["git", "-c", "user.name=n", "-c", "user.email=e", *arguments], cwd=self.tree, check=True,
                              capture_output=True, text=True).stdout.strip()

    def test_prints_and_counts_each_target(self) -> None:
        self.engine("allowList")
        self.engine("iniFile")
        done = self.fuzz("allowList", "iniFile")
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        self.assertEqual([f"{name:20}         1000 executions       40 a second      2 new inputs  passed"
                          for name in ("allowList", "iniFile")], done.stdout.splitlines())
        self.assertEqual([["linux-fuzz", "allowList", "1000", "passed"], ["linux-fuzz", "iniFile", "1000", "passed"]],
                         self.counts())
        self.assertRegex((self.tree / "build/fuzz/counts").read_text(),
                         r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ linux-fuzz allowList unknown 1000 \d+ passed\n")

    def test_hands_the_engine_what_it_needs(self) -> None:
        code = ENGINE + "    say('\\n'.join(sys.argv[1:])); say(os.environ['ASAN_OPTIONS']); end()\n"
        for name in ("targetMemory64", "queryResult"):
            self.engine(name, code, "linux-fuzz-32")
            self.assertEqual(0, self.fuzz("--preset", "linux-fuzz-32", "--seconds", "5", name).returncode)
        build = self.tree / "build/linux-fuzz-32"
        self.assertEqual(
            ["-max_len=512", "-timeout=60", "-rss_limit_mb=2048", "-entropic=0",
             f"-artifact_prefix={build}/findings/targetMemory64-", "-print_final_stats=1", "-detect_leaks=0",
             "-max_total_time=5", f"{build}/corpus/targetMemory64", f"{self.tree}/tests/fuzz/corpus/targetMemory",
             "malloc_context_size=0:quarantine_size_mb=2:thread_local_quarantine_size_kb=256"],
            (build / "logs/targetMemory64/0").read_text().splitlines()[1:12])
        self.assertIn(f"-dict={self.tree}/tests/fuzz/json.dict",
                      (build / "logs/queryResult/0").read_text().splitlines())

    def test_reports_a_crash_and_fails(self) -> None:
        self.engine("allowList", CRASH)
        self.engine("iniFile")
        done = self.fuzz("allowList", "iniFile")
        self.assertEqual(1, done.returncode)
        self.assertRegex(done.stdout, "(?m)^allowList +77 executions .* FOUND$")
        self.assertRegex(done.stdout, "(?m)^iniFile +1000 executions .* passed$")
        self.assertEqual("==1==ERROR: AddressSanitizer: heap-buffer-overflow\n", done.stderr)
        self.assertEqual([["linux-fuzz", "allowList", "77", "FOUND"], ["linux-fuzz", "iniFile", "1000", "passed"]],
                         self.counts())
        self.assertTrue((self.tree / "build/linux-fuzz/findings/allowList-crash-1").exists())

    def test_reports_a_finding_of_an_engine_that_ends_with_0(self) -> None:
        self.engine("allowList", ENGINE + "    open(options['artifact_prefix'] + 'slow-unit-1', 'w'); end()\n")
        self.assertEqual(1, self.fuzz("allowList").returncode)
        self.engine("allowList")  # and leaves an earlier finding alone
        self.assertEqual(0, self.fuzz("allowList").returncode)
        self.assertEqual(["FOUND", "passed"], [line[3] for line in self.counts()])

    def test_reports_an_engine_that_dies_without_a_word(self) -> None:
        self.engine("allowList", "os.kill(os.getpid(), 9)")
        done = self.fuzz("allowList")
        self.assertEqual(1, done.returncode)
        self.assertEqual([["linux-fuzz", "allowList", "0", "FOUND"]], self.counts())

    def test_fails_an_engine_that_runs_fewer_inputs_than_asked_for(self) -> None:
        self.engine("allowList", ENGINE + "    end(runs=499)\n")
        done = self.fuzz("--seconds", "0", "--runs", "500", "allowList")
        self.assertEqual(1, done.returncode)
        self.assertEqual("the engine ran 499 inputs in 3 s, and was asked for 500 inputs\n", done.stderr)
        self.assertEqual([["linux-fuzz", "allowList", "499", "SHORT"]], self.counts())

    def test_fails_an_engine_that_ends_too_soon_or_without_its_statistics(self) -> None:
        self.engine("allowList", ENGINE + "    end(seconds=58)\n")
        done = self.fuzz("allowList")
        self.assertEqual((1, "the engine ran 1000 inputs in 58 s, and was asked for 60 s\n"),
                         (done.returncode, done.stderr))
        self.engine("allowList", "sys.exit(0)")
        done = self.fuzz("allowList")
        self.assertEqual((1, "the engine ended without its final statistics\n"), (done.returncode, done.stderr))

    def test_deals_the_inputs_out_to_the_jobs(self) -> None:
        self.engine("allowList")
        self.assertEqual(0, self.fuzz("--runs", "1001", "--seconds", "0", "--jobs", "2", "allowList").returncode)
        self.assertEqual([["linux-fuzz", "allowList", "1002", "passed"]], self.counts())

    def test_goes_on_to_a_total(self) -> None:
        self.engine("allowList", ENGINE + "    end(runs=min(runs, 600))\n")
        for executed in ("600", "400"):
            self.assertEqual(0, self.fuzz("--total", "1000", "allowList").returncode)
            self.assertEqual(["linux-fuzz", "allowList", executed, "passed"], self.counts()[-1])
        done = self.fuzz("--total", "1000", "allowList")
        self.assertEqual((0, f"{'allowList':20} {1000:12} executions already\n"), (done.returncode, done.stdout))
        self.assertEqual(2, len(self.counts()))

    def test_takes_no_more_than_the_inputs_of_one_run_towards_a_total(self) -> None:
        self.engine("allowList")
        self.fuzz("--total", "1000", "--runs", "300", "allowList")
        self.assertEqual([["linux-fuzz", "allowList", "300", "passed"]], self.counts())

    def test_sums_the_counts_of_a_preset(self) -> None:
        self.engine("allowList")
        self.engine("allowList", preset="linux-fuzz-32")
        for arguments in ([], [], ["--preset", "linux-fuzz-32"]):
            self.fuzz(*arguments, "allowList")
        self.engine("allowList", CRASH)
        self.fuzz("allowList")
        self.assertRegex(self.fuzz("--counts", "allowList").stdout,
                         r"^allowList +2077 executions in +3 runs +\d+ seconds +1 with findings\n$")
        self.assertEqual(8, len(self.fuzz("--counts").stdout.splitlines()))

    def test_counts_a_run_that_is_stopped(self) -> None:
        started = self.folder / "started"
        self.engine("allowList", ENGINE + f"""
    import signal, time
    def interrupted(*_):
        say("stat::number_of_executed_units: 42")
        os._exit(72)
    signal.signal(signal.SIGINT, interrupted)
    open({str(started)!r}, "w")
    time.sleep(60)
""")
        with subprocess.Popen(self.command("allowList", "iniFile"), stdout=subprocess.DEVNULL) as fuzz:
            deadline = time.monotonic() + 30
            while not started.exists():
                self.assertLess(time.monotonic(), deadline)
                time.sleep(0.05)
            fuzz.send_signal(signal.SIGTERM)
            self.assertEqual(130, fuzz.wait(30))
        self.assertEqual([["linux-fuzz", "allowList", "42", "passed"]], self.counts())

    def test_sifts_inputs(self) -> None:
        self.engine("allowList", """
            folders = [argument for argument in sys.argv[1:] if not argument.startswith("-")]
            assert "-merge=1" in sys.argv
            for name in "ab":
                open(folders[0] + "/" + name, "w")
        """)
        done = self.fuzz("--keep", "allowList")
        self.assertRegex(done.stdout, "^allowList: 2 inputs in /")
        shutil.rmtree(Path(done.stdout.split(" in ")[1].strip()))
        self.assertEqual(0, done.returncode)
        self.engine("allowList", "say('broken'); sys.exit(1)")
        done = self.fuzz("--keep", "allowList")
        self.assertEqual((1, "broken\n"), (done.returncode, done.stderr))

    def test_records_runs_when_it_is_asked_to(self) -> None:
        self.engine("allowList")
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-qm", "first")
        self.fuzz("allowList")
        settings = self.tree / "build/linux-fuzz/CMakeFiles/3.25.1/CMakeCXXCompiler.cmake"
        settings.parent.mkdir(parents=True)
        settings.write_text('set(CMAKE_CXX_COMPILER "/bin/c")\nset(CMAKE_CXX_COMPILER_ID "Clang")\n'
                            'set(CMAKE_CXX_COMPILER_VERSION "14.0.6")\n')
        records = self.tree / "docs/runs/fuzz.json"
        self.assertFalse(records.exists())
        for _ in range(2):
            self.assertEqual(0, self.fuzz("--record", "--jobs", "2", "allowList").returncode)
        entries = json.loads(records.read_text())
        self.assertEqual(2, len(entries))
        self.assertRegex(entries[1].pop("date"), r"^\d{4}-\d\d-\d\d$")
        self.assertIn(entries[1].pop("seconds"), range(60))
        self.assertEqual({"preset": "linux-fuzz", "compiler": "Clang 14.0.6", "target": "allowList",
                          "commit": self.git("rev-parse", "--short", "HEAD"), "seeds": [4711, 4711],
                          "executions": 2000, "result": "passed"}, entries[1])
        (self.tree / "changed").write_text("")
        self.assertEqual(2, self.fuzz("--record", "allowList").returncode)

    def test_refuses_what_it_cannot_do(self) -> None:
        for arguments in (["--fast"], ["--seconds"], ["--runs", "many"], ["--seconds", "0"], ["--jobs", "0"],
                          ["noTarget"]):
            self.assertEqual(2, self.fuzz(*arguments).returncode, arguments)
