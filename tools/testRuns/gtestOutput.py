"""Checks the output of a GoogleTest program. Imports nothing: each test case starts a new interpreter."""

RUNNING = b"[==========] Running "
RULE = b"[==========] "
PASSED = b"[  PASSED  ] "
SKIPPED = b"[  SKIPPED ] "
DISABLED_NOTICE = b"  YOU HAVE "

# Environment variables that would override the selection of the command line, or change the lines above.
FOREIGN_SETTINGS = ("GTEST_FILTER", "GTEST_COLOR", "GTEST_BRIEF", "GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX")


def first_number(text: bytes) -> int | None:
    """Returns the number at the start of the text, or None."""
    digits = text.split(b" ", 1)[0]
    return int(digits) if digits.isdigit() else None


class GtestOutput:
    """Takes the output in pieces and finds what a passed run lacks."""

    def __init__(self) -> None:
        self._rest = b""  # an incomplete line
        self._iterations: list[dict[str, int]] = []  # for each run of the selected cases: selected, ended, passed
        self._skipped: set[str] = set()
        self._disabled = 0

    def take(self, output: bytes) -> None:
        lines = (self._rest + output).split(b"\n")
        self._rest = lines.pop()
        for line in lines:
            self._take_line(line.rstrip(b"\r"))

    def _take_line(self, line: bytes) -> None:
        if line.startswith(RUNNING):
            number = first_number(line[len(RUNNING):])
            if number is not None:
                self._iterations.append({"selected": number})
        elif line.startswith(RULE) and line.endswith(b" ms total)") and b" ran. (" in line:
            self._keep("ended", first_number(line[len(RULE):]))
        elif line.startswith(PASSED) and line.endswith((b" tests.", b" test.")):
            if self._iterations and "ended" in self._iterations[-1]:
                self._keep("passed", first_number(line[len(PASSED):]))
        elif line.startswith(SKIPPED):
            # "[  SKIPPED ] Suite.Case (0 ms)" at the case, and "[  SKIPPED ] Suite.Case" in the list at the end
            name = line[len(SKIPPED):].split(b" ", 1)[0].decode(errors="replace")
            if "." in name:
                self._skipped.add(name)
        elif line.startswith(DISABLED_NOTICE) and b" DISABLED TEST" in line:
            self._disabled = first_number(line[len(DISABLED_NOTICE):]) or 0

    def _keep(self, what: str, number: int | None) -> None:
        if self._iterations and number is not None:
            self._iterations[-1][what] = number

    def faults(self, allowed: set[str]) -> list[str]:
        """Returns why the run did not pass; empty if it did. The cases in `allowed` may be skipped or disabled."""
        if self._rest:
            self.take(b"\n")
        found = [f"{name} was skipped" for name in sorted(self._skipped - allowed)]
        if self._disabled > sum("DISABLED" in name for name in allowed):
            found.append(f"{self._disabled} cases are disabled")
        if not self._iterations:
            found.append("no test began: the output has no line '[==========] Running N tests'")
        for iteration in self._iterations:
            selected, passed = iteration["selected"], iteration.get("passed")
            if selected == 0:
                found.append("no case was selected")
            elif "ended" not in iteration:
                found.append(f"{selected} cases were selected, and the program ended before the last one did")
            elif passed is None:
                found.append("the output has no result line '[  PASSED  ] N tests.'")
            elif passed + len(self._skipped & allowed) != selected or iteration["ended"] != selected:
                found.append(f"{selected} cases were selected, {iteration['ended']} ran, {passed} passed")
        return found


def faults_of_listing(listing: bytes, allowed: set[str]) -> list[str]:
    """Returns why the output of --gtest_list_tests is unusable; empty if it is usable."""
    cases, suite, found = 0, "", []
    for line in listing.decode(errors="replace").splitlines():
        name = line.split("#")[0].rstrip()
        if not line.startswith("  "):
            suite = name
            continue
        cases += 1
        full = suite + name.strip()
        if "DISABLED" "_" in full and full not in allowed:
            found.append(f"{full} is disabled")
    if cases == 0:
        found.append("the program lists no test")
    return found
