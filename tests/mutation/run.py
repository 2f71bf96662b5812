#!/usr/bin/env python3
"""Plants one change at a time into the library and runs the tests.

    tests/mutation/run.py [--jobs N] [--only REGEX] [--list] [--report FILE] [--resume]

Each worker has a copy of the tree and a separate build under build/mutation. For each mutant it builds the libraries
that tests load and, one after the other, the test programs that cover the file, until one fails. The outcomes:

    killed    a program reported a failed test, crashed, or ended before its last case; tools/testRun decides
    timeout   no program failed, and at least one exceeded its limit of processor time or elapsed time
    survived  all programs passed
    invalid   the mutant does not compile; it counts nowhere

Each survivor must be in survivors.txt with the reason why no test can distinguish it from the original. The run fails
if one is missing there, if one there is not a survivor, or if fewer than 95 % of the valid mutants are killed. A
timeout does not count as killed; the run lists each.

A whole run takes some hours. --resume takes the outcomes for unchanged files from the report of an earlier run, except
those of survivors and timeouts, which run again: tests may have been added for them. It does not notice that a test was
removed. A run with --only has a separate report.

Exit codes: 0 passed, 1 failed, 2 the unchanged tree does not build or pass.
"""

import argparse
import os
import queue
import re
import sys
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
import mutants
from covering import covering, mutatedFiles
from report import earlier, listedSurvivors, oneLine, outcomeLine, states
from worker import Worker

ROOT = Path(__file__).resolve().parents[2]
LEAST_KILLED = 95.0  # per cent


def allMutants(only):
    found = []
    for path in mutatedFiles(ROOT):
        found += mutants.mutantsOf(str(path.relative_to(ROOT)), path.read_text())
    return [mutant for mutant in found if re.search(only, mutant.key())]


class Run:
    """Distributes mutants to workers, and keeps and reports the outcomes."""

    def __init__(self, todo, report, done):
        self.report = report
        self.results = []  # (mutant, outcome)
        self.failures = []
        self.lock = threading.Lock()
        self.started = time.monotonic()
        self.total = len(todo)
        self.work = queue.Queue()
        last = []
        for mutant in todo:
            outcome, detail = done.get((mutant.line, mutant.key()), (None, ""))
            if outcome is None:
                self.work.put(mutant)
            elif outcome in ("survived", "timeout"):
                last.append(mutant)  # they take longest
            else:
                self.add(mutant, outcome, detail)
        for mutant in last:
            self.work.put(mutant)

    def add(self, mutant, outcome, detail):
        self.results.append((mutant, outcome))
        print(outcomeLine(mutant, outcome, detail), file=self.report, flush=True)

    def take(self, worker):
        """Runs mutants in one worker until none is left."""
        try:
            worker.prepare()
            while not self.failures:
                mutant = self.work.get_nowait()
                outcome, detail = worker.verdict(mutant)
                with self.lock:
                    self.add(mutant, outcome, detail)
                    if sys.stderr.isatty() or len(self.results) % 50 == 0:
                        print(f"{len(self.results)} of {self.total}, {time.monotonic() - self.started:.0f} s",
                              file=sys.stderr, end="\r" if sys.stderr.isatty() else "\n", flush=True)
        except queue.Empty:
            return
        except Exception as error:  # a worker that ends early must fail the run
            self.failures.append(str(error))

    def having(self, outcome):
        return [mutant for mutant, its in self.results if its == outcome]


def judge(run, isWhole, report):
    """Prints the result; returns whether the run passed."""
    known = listedSurvivors()
    killed, timeouts, survivors = run.having("killed"), run.having("timeout"), run.having("survived")
    valid = len(killed) + len(timeouts) + len(survivors)
    share = 100.0 * len(killed) / max(1, valid)
    unlisted = [mutant for mutant in survivors if mutant.key() not in known]
    for mutant in timeouts:
        print(f"timeout: {mutant.file}:{mutant.line}: {oneLine(mutant.key())}")
    for mutant in unlisted:
        print(f"not listed: {mutant.file}:{mutant.line}: {oneLine(mutant.key())}")
    stale = known.keys() - {mutant.key() for mutant in survivors} if isWhole else ()
    for key in sorted(stale):
        print("listed, but not a survivor: " + oneLine(key))
    print(f"{len(killed)} of {valid} mutants killed ({share:.1f} %), {len(timeouts)} timeouts, "
          f"{len(survivors)} survived, {len(run.having('invalid'))} did not compile; "
          f"{time.monotonic() - run.started:.0f} s; {report}")
    return share >= LEAST_KILLED and not unlisted and not stale


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--only", default="", help="regular expression on 'file | kind | before | after'")
    parser.add_argument("--list", action="store_true", help="list the mutants and plant none")
    parser.add_argument("--resume", action="store_true", help="keep earlier outcomes for files that have not changed")
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

    done = earlier(options.report) if options.resume else {}
    programs = sorted({program for mutant in todo for program in covering(mutant.file)})
    options.report.parent.mkdir(parents=True, exist_ok=True)
    with options.report.open("w") as report:
        for name, state in states().items():
            print(f"file {state} {name}", file=report)
        run = Run(todo, report, done)
        threads = [threading.Thread(target=run.take, args=(Worker(number, programs),))
                   for number in range(options.jobs)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    if run.failures:
        print(run.failures[0], file=sys.stderr)
        return 2
    return 0 if judge(run, not options.only, options.report) else 1


if __name__ == "__main__":
    sys.exit(main())
