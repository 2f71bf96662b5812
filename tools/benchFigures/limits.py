"""The limits that measured figures have to keep. docs/performance.md says what they mean."""

from benchFigures.figures import Figures

SHAPES = ("1/1", "8/8", "64/16", "256/64", "1000/100")  # rules/machine ids of each
SIZES = (10, 1000, 100000)  # entries of the allow list

MOST_OF_EVENT = 1.0  # in floors of the same shape
MOST_GROWTH_WITH_RULES = 20.0  # T(256, 64) / T(64, 16)
MOST_GROWTH_WITH_LIST = 1.15
MOST_OF_ALLOW_LIST = 1.2  # in floors
LEAST_GAIN_OF_SECOND_THREAD = 1.8  # the median of the samples, on Linux
SAMPLES_OF_GAIN = 9
MOST_GROWTH_OF_LOOK_UP = 1.3
MOST_OF_RECORD = 2.0  # in floors
MOST_OF_REPLAY = 2.0  # by mordhost, in times of the library alone with the same events; on Linux
MOST_PEAK = 3.0  # in answers
MOST_RESIDENT_GROWTH = 1.01
PRESETS = ("linux", "windows-x86")


class Judgement:
    """Holds the figures of one build to all limits."""

    def __init__(self, preset: str, figures: Figures) -> None:
        self.lines: list[str] = []  # to be printed
        self.is_broken = False
        self.is_missing = False
        self._preset = preset
        self._figures = figures
        self._events()
        self._growth()
        self._allow_lists()
        self._threads()
        self._records()
        self._replays()
        self._memory()
        self.lines[:0] = [f"{name} was not measured" for name in figures.missing]
        self.is_missing |= bool(figures.missing)

    def exit_code(self) -> int:
        """0 all limits are kept, 1 one is broken, 2 something was not measured."""
        return 2 if self.is_missing else 1 if self.is_broken else 0

    def _heading(self, text: str) -> None:
        self.lines.append(f"{self._preset}: {text}")

    def _mark(self, is_kept: bool) -> str:
        self.is_broken |= not is_kept
        return "" if is_kept else "   BROKEN"

    def _at_most(self, what: str, ratio: float, bound: float) -> None:
        self.lines.append(f"  {what:52} {ratio:7.2f}  at most  {bound:5.2f}{self._mark(ratio <= bound)}")

    def _at_least(self, what: str, ratio: float, bound: float) -> None:
        self.lines.append(f"  {what:52} {ratio:7.2f}  at least {bound:5.2f}{self._mark(ratio >= bound)}")

    def _event(self, shape: str, size: int) -> float:
        return self._figures.least(f"Event/{shape}/{size}")

    def _floor(self, shape: str) -> float:
        """It does not depend on the list: all samples of a shape are samples of the same work."""
        return min(self._figures.least(f"Floor/{shape}/{size}") for size in SIZES)

    def _events(self) -> None:
        self._heading("an event beside its floor")
        self.lines.append(f"  {'R, M, N':12} {'event':>12} {'floor':>12} {'ratio':>8}")
        for shape in SHAPES:
            for size in SIZES:
                event, floor = self._event(shape, size), self._floor(shape)
                self.lines.append(f"  {f'{shape}/{size}':18} {event / 1000:9.1f} us {floor / 1000:9.1f} us "
                                  f"{event / floor:6.2f}  at most {MOST_OF_EVENT:.2f}"
                                  f"{self._mark(event / floor <= MOST_OF_EVENT)}")

    def _growth(self) -> None:
        self._heading("growth")
        for size in SIZES:
            self._at_most(f"T(256, 64) / T(64, 16), N = {size}",
                          self._event("256/64", size) / self._event("64/16", size), MOST_GROWTH_WITH_RULES)
        for shape in SHAPES:
            self._at_most(f"T(N = 100000) / T(N = 10) at {shape}",
                          self._event(shape, 100000) / self._event(shape, 10), MOST_GROWTH_WITH_LIST)

    def _allow_lists(self) -> None:
        self._heading("allow lists, beside parsing them and filling the map")
        for size in SIZES:
            ratio = self._figures.least(f"SetAllowList/{size}") / self._figures.least(f"ListFloor/{size}")
            self._at_most(f"SetAllowList, N = {size}", ratio, MOST_OF_ALLOW_LIST)

    def _threads(self) -> None:
        self._heading("two threads, in events on one")
        counts = {name: self._figures.count(name) for name in ("Gain", "GainFloor")}
        for name, what in (("Gain", "events"), ("GainFloor", "their floor")):
            if counts[name] < SAMPLES_OF_GAIN:
                self.lines.append(f"  {what}: {counts[name]} of {SAMPLES_OF_GAIN} samples, since no second processor "
                                  "was free for long enough")
                self.is_missing |= self._preset == "linux"
            elif name == "Gain" and self._preset == "linux":
                self._at_least(what, self._figures.median(name), LEAST_GAIN_OF_SECOND_THREAD)
            else:
                self.lines.append(f"  {what:52} {self._figures.median(name):7.2f}  no limit")
        self._at_most("look-up of one rule, N = 100000 / N = 10",
                      self._figures.least("Match/100000") / self._figures.least("Match/10"), MOST_GROWTH_OF_LOOK_UP)

    def _records(self) -> None:
        self._heading("log records")
        record, floor = self._figures.least("Record"), self._figures.least("RecordFloor")
        self.lines.append(f"  {record:.0f} ns a record, {floor:.0f} ns to append its bytes to a file")
        self._at_most("a record, in floors", record / floor, MOST_OF_RECORD)

    def _replay(self, rows: str, logging: str, time: str) -> float:
        """A whole replay, in times of the library alone."""
        alone = self._figures.median(f"ReplayLibrary/{logging}/{time}")
        return self._figures.median(f"Replay/{rows}/{logging}/{time}") / alone

    def _replays(self) -> None:
        self._heading("a replay by mordhost, beside the library alone with the same events")
        for logging in ("off", "on"):
            alone = self._figures.median(f"ReplayLibrary/{logging}/wall") / 1000
            self.lines.append(f"  log {logging:3}  {alone:.1f} us an event by the library alone")
            for rows in ("table", "json"):
                what = f"{rows} rows, log {logging}, in the library alone"
                by_clock = self._replay(rows, logging, "wall")
                if self._preset == "linux":
                    self._at_most(what, self._replay(rows, logging, "processor"), MOST_OF_REPLAY)
                    self.lines.append(f"  {'  the same by the clock':52} {by_clock:7.2f}")
                else:
                    # Under Wine the processor's time is not to be had.
                    self.lines.append(f"  {what:52} {by_clock:7.2f}  no limit under Wine")

    def _memory(self) -> None:
        self._heading("memory")
        self._at_most("peak of an event of (1000, 100), in answers",
                      self._figures.least("PeakMemory") / self._figures.least("AnswerSize"), MOST_PEAK)
        self._at_most("resident size after 10 million events / 100000",
                      self._figures.latest("Resident/10000000") / self._figures.least("Resident/100000"),
                      MOST_RESIDENT_GROWTH)
