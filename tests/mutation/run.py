#!/usr/bin/env python3
"""Plants one change at a time into the library and sees whether the tests notice.

    tests/mutation/run.py [--jobs N] [--only REGEX] [--list] [--report FILE] [--resume]

Each worker has a copy of the tree and a build of its own under build/mutation. For every mutant it builds and runs the
test programs that cover the file, one after the other, until one fails: then the mutant is killed. A program that does
not end in time kills too. What does not compile is no mutant and is only counted. Survivors stand in survivors.txt,
each with the reason why no test can tell it from the original; one that does not stand there, or one that stands there
and is killed, fails the run, as does a share of killed mutants below 95 %.

The whole takes an hour or two. With --resume the outcomes of an earlier run for files that have not changed since are
taken from its report, and only the rest is tried, survivors among it: tests may have been added for them. A test that
was taken away since is not missed by it: run without --resume then. A run with --only has a report of its own.

Exit codes: 0 all is as promised, 1 it is not, 2 the unchanged tree does not build or pass.
"""

import argparse
import hashlib
import os
import queue
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import mutants

ROOT = Path(__file__).resolve().parents[2]
# What judges a test program: one that a change makes end half-way, with exit code 0, has failed.
TEST_RUN = [sys.executable, "-E", "-s", "-S", str(ROOT / "tools" / "testRun")]
LEAST_KILLED = 95.0  # per cent
TEST_SECONDS = 60  # for a program on the unchanged tree
PATIENCE = 10  # how many times longer it may take on a changed one, and 5 s at least: an endless loop is a kill as well

# Which test programs cover a folder, the quick and telling ones first. Public headers reach the tests too: what they
# say is held first by those programs that share no header with the library.
RECEIVER = ["handleEventTest", "documentTest", "lifecycleTest", "objectModelTest", "lifecycleInitTest",
            "lifecyclePropertiesTest", "lifecycleStatesTest", "lifecycleLockTest", "localMidTest",
            "lifecycleInitOrderTest", "procNameTest",
            "jsonTest", "memoryTest", "differentialTest", "productTest", "abiTest", "nestingTest"]
LOGGING = ["logTimestampTest", "logSiteTest", "logStreamTest", "logRecordTest", "startLoggerTest", "loggerUnloadTest",
           "abandonedRecordTest", "logFlagsTest", "repeatedStartTest", "logWithoutConverterTest",
           "startLoggerFailureTest", "initLogMoudleTest", "logSettingsTest", "standardOutputTest", "handleEventTest",
           "lifecycleInitTest", "memoryTest", "productTest"]
TEXT = ["textConvertTest", "missingConverterTest", "converterLookupTest", "textConvertMemoryTest", "handleEventTest",
        "memoryTest", "productTest"]
FRAME = ["objectModelTest", "createZelkObjectTest", "baseServicesTest", "serviceLookupTest", "moduleLookupTest",
         "creationTest", "converterLookupTest", "localMidTest", "productTest", "abiTest"]
PROC_PATH = ["procPath32Test", "procPath64Test"]
COVERING = [
    (r"src/mordRev/src/procPathWin32\.cpp", PROC_PATH),
    (r"src/frame/values\.h", ["abiTest", "productTest"] + RECEIVER),
    (r"src/mordRev/", RECEIVER),
    (r"src/logging/", LOGGING),
    (r"src/text/", TEXT),
    (r"src/frame/(interfaces|identifiers)\.h", ["abiTest", "productTest"] + FRAME),
    (r"src/frame/", FRAME),
]
MUTATED = ["src/mordRev/src", "src/logging", "src/text", "src/frame"]


def covering(name):
    return next(programs for pattern, programs in COVERING if re.match(pattern, name))


def allMutants(only):
    found = []
    for folder in MUTATED:
        for path in sorted((ROOT / folder).glob("*")):
            if path.suffix in (".cpp", ".h"):
                name = str(path.relative_to(ROOT))
                found += mutants.mutantsOf(name, path.read_text())
    return [mutant for mutant in found if re.search(only, mutant.key())]


def states():
    """What tells one state of each mutated file, and of the ways to change it, from another."""
    ways = Path(mutants.__file__).read_bytes()
    return {str(path.relative_to(ROOT)): hashlib.sha256(ways + path.read_bytes()).hexdigest()
            for folder in MUTATED for path in sorted((ROOT / folder).glob("*"))}


def earlier(report):
    """What the report of an earlier run says of files that are as they were: (line, key) -> outcome and program."""
    found, then = {}, {}
    for line in report.read_text().splitlines() if report.is_file() else []:
        if line.startswith("file "):
            state, name = line.split(" ", 2)[1:]
            then[name] = state
        elif match := re.fullmatch(r"(killed|invalid|survived) +(\S*) +line (\d+): (.*)", line):
            found[int(match[3]), match[4].replace("⏎", "\n")] = (match[1], match[2])
    same = {name for name, state in states().items() if then.get(name) == state}
    return {mutant: outcome for mutant, outcome in found.items() if mutant[1].split(" | ")[0] in same}


class Worker:
    """A copy of the tree, its build, and the run of one mutant after the other in it."""

    def __init__(self, number):
        self.tree = ROOT / "build" / "mutation" / f"worker{number}"
        self.build = self.tree / "build" / "linux-mutation"
        self.known = set()  # what this build can make
        self.fresh = {}  # the programs whose cases want a process each, with their cases
        self.limits = {}  # how many seconds each program may take

    def prepare(self):
        names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                               capture_output=True).stdout.decode().split("\0")
        for name in filter(None, names):
            source, copy = ROOT / name, self.tree / name
            if not source.is_file():
                continue
            if copy.is_file() and copy.read_bytes() == source.read_bytes():
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, copy)
        self.must(["cmake", "--preset", "linux-mutation"])
        targets = subprocess.run(["ninja", "-C", str(self.build), "-t", "targets", "all"], check=True,
                                 capture_output=True).stdout.decode()
        wanted = {program for _, programs in COVERING for program in programs}
        self.known = {program for program in wanted if f"tests/{program}:" in targets}
        missing = wanted - self.known
        if missing:
            raise RuntimeError("no such test programs: " + ", ".join(sorted(missing)))
        self.must(["ninja", "-C", str(self.build)] + [f"tests/{program}" for program in sorted(self.known)])
        for program in sorted(self.known):
            began = time.monotonic()
            if self.runsOnce(program):  # its cases want a process each
                self.fresh[program] = self.cases(program)
                verdict = self.runs(program)
                if verdict:
                    raise RuntimeError(f"{program} fails on the unchanged tree: {verdict}")
            self.limits[program] = max(5.0, PATIENCE * (time.monotonic() - began))

    def must(self, command):
        done = subprocess.run(command, cwd=self.tree, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if done.returncode != 0:
            raise RuntimeError(" ".join(command[:4]) + " failed:\n" + done.stdout.decode(errors="replace")[-3000:])

    def builds(self, program):
        return subprocess.run(["ninja", "-C", str(self.build), f"tests/{program}"], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def runs(self, program):
        """Why the program counts as failed, or nothing."""
        if program not in self.fresh:
            return self.runsOnce(program)
        for case in self.fresh[program]:
            verdict = self.runsOnce(program, f"--gtest_filter={case}")
            if verdict:
                return verdict
        return ""

    def cases(self, program):
        """The cases of a program by their full names, as ctest would run them one by one."""
        listing = subprocess.run([str(self.build / "tests" / program), "--gtest_list_tests"], check=True,
                                 cwd=self.build / "tests", capture_output=True).stdout.decode()
        suite, found = "", []
        for line in listing.splitlines()[1:]:
            name = line.split("#")[0].rstrip()
            if line.startswith("  "):
                found.append(suite + name.strip())
            else:
                suite = name
        return found

    def runsOnce(self, program, *arguments):
        environment = dict(os.environ, GTEST_BREAK_ON_FAILURE="0", GTEST_FAIL_FAST="1")
        process = subprocess.Popen([*TEST_RUN, str(self.build / "tests" / program), *arguments],
                                   cwd=self.build / "tests", env=environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            code = process.wait(self.limits.get(program, TEST_SECONDS))
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return "no end"
        return "" if code == 0 else f"exit code {code}"

    def verdict(self, mutant):
        """("killed", program), ("survived", ""), or ("invalid", "")"""
        path = self.tree / mutant.file
        original = path.read_text()
        path.write_text(mutants.apply(original, mutant))
        try:
            for program in covering(mutant.file):
                if not self.builds(program):
                    return "invalid", ""
                if self.runs(program):
                    return "killed", program
            return "survived", ""
        finally:
            path.write_text(original)


def listed():
    """The survivors that are known, each with its reason."""
    entries = {}
    for line in (Path(__file__).parent / "survivors.txt").read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            key, reason = line.rsplit(" | because ", 1)
            entries[key.strip().replace("⏎", "\n")] = reason.strip()
    return entries


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--only", default="", help="regular expression on 'file | kind | before | after'")
    parser.add_argument("--list", action="store_true", help="list the mutants and plant none")
    parser.add_argument("--resume", action="store_true",
                        help="keep what the report says of files that have not changed")
    parser.add_argument("--report", type=Path, help="default: build/mutation/report.txt, or only.txt with --only")
    options = parser.parse_args()
    if options.report is None:
        options.report = ROOT / "build" / "mutation" / ("only.txt" if options.only else "report.txt")
    todo = allMutants(options.only)
    if options.list:
        for mutant in todo:
            print(f"{mutant.file}:{mutant.line}: {mutant.kind}: {mutant.before.strip()} => {mutant.after.strip()}")
        print(len(todo), "mutants")
        return 0

    workers = [Worker(number) for number in range(options.jobs)]
    failures = []
    done = earlier(options.report) if options.resume else {}
    work = queue.Queue()
    results = []
    lock = threading.Lock()
    options.report.parent.mkdir(parents=True, exist_ok=True)
    started = time.monotonic()
    with options.report.open("w") as report:
        for name, state in states().items():
            print(f"file {state} {name}", file=report)

        def tell(mutant, outcome, program):
            results.append((mutant, outcome))
            oneLine = mutant.key().replace("\n", "⏎")
            print(f"{outcome:9} {program:24} line {mutant.line}: {oneLine}", file=report, flush=True)

        again = []
        for mutant in todo:
            outcome = done.get((mutant.line, mutant.key()))
            if outcome is None:
                work.put(mutant)
            elif outcome[0] == "survived":
                again.append(mutant)
            else:
                tell(mutant, *outcome)
        for mutant in again:  # they take longest, and most of them are known
            work.put(mutant)

        def labour(worker):
            try:
                worker.prepare()
            except (RuntimeError, subprocess.CalledProcessError) as error:
                failures.append(str(error))
                return
            while not failures:
                try:
                    mutant = work.get_nowait()
                except queue.Empty:
                    return
                outcome, program = worker.verdict(mutant)
                with lock:
                    tell(mutant, outcome, program)
                    if sys.stderr.isatty() or len(results) % 50 == 0:
                        print(f"{len(results)} of {len(todo)}, {time.monotonic() - started:.0f} s", file=sys.stderr,
                              end="\r" if sys.stderr.isatty() else "\n", flush=True)

        threads = [threading.Thread(target=labour, args=(worker,)) for worker in workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    if failures:
        print(failures[0], file=sys.stderr)
        return 2

    known = listed()
    survivors = [mutant for mutant, outcome in results if outcome == "survived"]
    killed = sum(outcome == "killed" for _, outcome in results)
    invalid = sum(outcome == "invalid" for _, outcome in results)
    share = 100.0 * killed / max(1, killed + len(survivors))
    good = share >= LEAST_KILLED
    for mutant in survivors:
        if mutant.key() not in known:
            print(f"not listed: {mutant.file}:{mutant.line}: {mutant.key()}".replace("\n", "⏎"))
            good = False
    if not options.only:
        for key in known.keys() - {mutant.key() for mutant in survivors}:
            print("listed, but no survivor: " + key.replace("\n", "⏎"))
            good = False
    print(f"{killed} of {killed + len(survivors)} mutants killed ({share:.1f} %), {len(survivors)} survived, "
          f"{invalid} did not compile; {time.monotonic() - started:.0f} s; {options.report}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
