"""tools/benchLimits over figures that are made up: each limit below, at and above its bound."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from benchFigures.figures import Figures
from benchFigures.limits import Judgement

TOOLS = Path(__file__).resolve().parents[1]
PRESETS = ("linux", "windows-x86")


def kept() -> dict[str, list[float]]:
    """Figures that keep all limits."""
    figures: dict[str, list[float]] = {}
    for shape, time in (("1/1", 1000), ("8/8", 8000), ("64/16", 100000), ("256/64", 1600000), ("1000/100", 10000000)):
        for size in (10, 1000, 100000):
            figures[f"Event/{shape}/{size}"] = [time]
            figures[f"Floor/{shape}/{size}"] = [time]
    for size in (10, 1000, 100000):
        figures |= {f"SetAllowList/{size}": [1000], f"ListFloor/{size}": [1000], f"Match/{size}": [200]}
    for logging in ("off", "on"):
        for time in ("wall", "processor"):
            figures[f"ReplayLibrary/{logging}/{time}"] = [1000]
            for rows in ("table", "json"):
                figures[f"Replay/{rows}/{logging}/{time}"] = [9000, 1900, 100]  # the one in the middle counts
    return figures | {
        "Gain": [1.9] * 9, "GainFloor": [1.95] * 9, "Record": [1000], "RecordFloor": [600], "AnswerSize": [1000],
        "PeakMemory": [2000], "Resident/100000": [4000000], "Resident/10000000": [4000000]}


def text_of(changes: dict[str, float | list[float] | None]) -> str:
    """Figures that keep all limits but for what is changed, or left out with None."""
    figures = kept()
    for name, value in changes.items():
        if value is None:
            del figures[name]
        else:
            figures[name] = value if isinstance(value, list) else [value]
    return "".join(f"{name} {value}\n" for name, values in figures.items() for value in values)


class Limits(unittest.TestCase):
    def changed(self, code: int, broken: int | None, pattern: str, preset: str, **changes: float | list | None) -> None:
        """Judges figures that are changed; in their names _ is for /.

        The exit code, how many lines are marked as broken if that is asked, and a line that fits the pattern.
        """
        text = text_of({name.replace("_", "/"): value for name, value in changes.items()})
        judgement = Judgement(preset, Figures(text))
        output = "\n".join(judgement.lines)
        self.assertEqual(code, judgement.exit_code(), output)
        if broken is not None:
            self.assertEqual(broken, sum(line.endswith("   BROKEN") for line in judgement.lines), output)
        self.assertRegex(output, f"(?m){pattern}")

    def test_hold_for_events_of_each_shape(self) -> None:
        for preset in PRESETS:
            for shape, floor in (("1_1", 1000), ("8_8", 8000), ("64_16", 100000), ("256_64", 1600000),
                                 ("1000_100", 10000000)):
                place = shape.replace("_", "/") + "/1000"
                self.changed(0, 0, rf"{place} .* 1\.00  at most 1\.00$", preset)
                self.changed(1, 1, rf"{place} .* 1\.01  at most 1\.00   BROKEN$", preset,
                             **{f"Event_{shape}_1000": 1.01 * floor})

    def test_take_the_least_of_several_samples(self) -> None:
        self.changed(0, 0, r"8/8/10 .* 1\.00  at most 1\.00$", "linux", Event_8_8_10=[20000, 8000, 30000])

    def test_take_the_least_floor_of_a_shape(self) -> None:
        self.changed(1, 1, r"8/8/1000 .* 1\.01  at most 1\.00   BROKEN$", "linux", Floor_8_8_100000=7900,
                     Event_8_8_1000=7979, Event_8_8_10=7900, Event_8_8_100000=7900)

    def test_hold_for_growth(self) -> None:
        for preset in PRESETS:
            self.changed(0, 0, r"N = 10\) at 1/1 .* 1\.15  at most +1\.15$", preset,
                         Event_1_1_10=800, Event_1_1_100000=920)
            self.changed(1, 1, r"N = 10\) at 1/1 .* 1\.16  at most +1\.15   BROKEN$", preset,
                         Event_1_1_10=800, Event_1_1_100000=928)
            self.changed(0, 0, r"T\(64, 16\), N = 1000 .* 20\.00 .*$", preset, Event_64_16_1000=80000)
            self.changed(1, 1, r"T\(64, 16\), N = 1000 .* 20\.51 .*BROKEN$", preset, Event_64_16_1000=78000)

    def test_hold_for_allow_lists_and_look_ups(self) -> None:
        for preset in PRESETS:
            self.changed(0, 0, r"SetAllowList, N = 1000 .* 1\.20 .*$", preset, SetAllowList_1000=1200)
            self.changed(1, 1, r"SetAllowList, N = 1000 .* 1\.21 .*BROKEN$", preset, SetAllowList_1000=1210)
            self.changed(0, 0, r"look-up of one rule.* 1\.30 .*$", preset, Match_100000=260)
            self.changed(1, 1, r"look-up of one rule.* 1\.31 .*BROKEN$", preset, Match_100000=262)

    def test_hold_for_records(self) -> None:
        for preset in PRESETS:
            self.changed(0, 0, r"a record, in floors .* 2\.00  at most +2\.00$", preset, Record=1200)
            self.changed(1, 1, r"a record, in floors .* 2\.01 .*BROKEN$", preset, Record=1206)

    def test_hold_for_replays_on_linux_alone(self) -> None:
        for rows in ("table", "json"):
            for logging in ("off", "on"):
                name, figure = f"{rows} rows, log {logging}, in the library alone", f"Replay_{rows}_{logging}_"
                self.changed(0, 0, rf"{name} +1\.90  at most +2\.00$", "linux")
                self.changed(0, 0, rf"{name} +2\.00  at most +2\.00$", "linux", **{figure + "processor": 2000})
                self.changed(1, 1, rf"{name} +2\.01 .*BROKEN$", "linux", **{figure + "processor": [2010, 100, 3000]})
                self.changed(0, 0, rf"{name} +2\.50  no limit", "windows-x86", **{figure + "wall": 2500})

    def test_need_the_figures_of_replays(self) -> None:
        for preset, name in (("linux", "Replay_json_on_processor"), ("linux", "ReplayLibrary_off_wall"),
                             ("windows-x86", "Replay_table_off_wall"), ("windows-x86", "ReplayLibrary_on_wall")):
            self.changed(2, None, f"^{name.replace('_', '/')} was not measured$", preset, **{name: None})
        # Of the times under Wine the processor's is not asked.
        self.changed(0, 0, "no limit under Wine", "windows-x86", Replay_json_on_processor=None)

    def test_hold_for_memory(self) -> None:
        for preset in PRESETS:
            self.changed(0, 0, r"peak of an event.* 3\.00 ", preset, PeakMemory=3000)
            self.changed(1, 1, r"peak of an event.* 3\.01 .*BROKEN$", preset, PeakMemory=3010)
            self.changed(0, 0, r"resident size.* 1\.01 ", preset, Resident_10000000=4040000)
            self.changed(1, 1, r"resident size.* 1\.02 .*BROKEN$", preset, Resident_10000000=[4000000, 4080000])

    def test_hold_the_median_gain_of_a_second_thread_on_linux_alone(self) -> None:
        least = [1.0] * 4 + [1.8] + [1.9] * 4
        less = [1.0] * 4 + [1.79] + [1.9] * 4
        self.changed(0, 0, r"events +1\.80  at least +1\.80$", "linux", Gain=least)
        self.changed(1, 1, r"events +1\.79 .*BROKEN$", "linux", Gain=less)
        self.changed(0, 0, r"events +1\.79  no limit$", "windows-x86", Gain=less)

    def test_need_nine_samples_of_the_gain_on_linux_alone(self) -> None:
        for name, what in (("Gain", "events"), ("GainFloor", "their floor")):
            for samples in ([1.9] * 8, None):
                pattern = f"{what}: {len(samples or [])} of 9 samples"
                self.changed(2, 0, pattern, "linux", **{name: samples})
                self.changed(0, 0, pattern, "windows-x86", **{name: samples})

    def test_need_each_figure(self) -> None:
        for preset in PRESETS:
            for name in ("Event_64_16_1000", "Floor_1_1_10", "SetAllowList_10", "ListFloor_100000", "Match_10",
                         "Record", "RecordFloor", "AnswerSize", "PeakMemory", "Resident_100000", "Resident_10000000"):
                self.changed(2, None, f"^{name.replace('_', '/')} was not measured$", preset, **{name: None})


class Command(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "tools").mkdir()
        shutil.copy(TOOLS / "benchLimits", self.root / "tools")
        shutil.copytree(TOOLS / "benchFigures", self.root / "tools/benchFigures")
        for preset in PRESETS:
            self.measured(preset, {})

    def measured(self, preset: str, changes: dict[str, float | list[float] | None]) -> None:
        folder = self.root / "build" / preset / "bench"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "figures").write_text(text_of(changes))

    def sees(self, code: int, pattern: str, *presets: str) -> None:
        done = subprocess.run([sys.executable, self.root / "tools/benchLimits", *presets], capture_output=True,
                              text=True)
        self.assertEqual(code, done.returncode, done.stdout + done.stderr)
        self.assertRegex(done.stdout + done.stderr, f"(?m){pattern}")

    def test_passes_where_all_limits_are_kept(self) -> None:
        self.sees(0, r"1000/100/100000 .* 1\.00  at most 1\.00$", *PRESETS)

    def test_fails_where_one_is_broken_in_any_build(self) -> None:
        for preset in PRESETS:
            self.setUp()
            self.measured(preset, {"PeakMemory": 3010})
            self.sees(1, "BROKEN$", *PRESETS)

    def test_goes_by_the_worst_of_all_builds(self) -> None:
        self.measured("linux", {"PeakMemory": None})
        self.measured("windows-x86", {"PeakMemory": 3010})
        self.sees(2, "BROKEN$", *PRESETS)

    def test_needs_each_build(self) -> None:
        (self.root / "build/windows-x86/bench/figures").unlink()
        self.sees(2, r"^benchLimits: no figures of windows-x86 \(bench/run windows-x86\)$", *PRESETS)

    def test_is_for_two_builds(self) -> None:
        self.sees(2, "^benchLimits: which builds", "linux-asan")
        self.sees(2, "^benchLimits: which builds")


class FiguresTest(unittest.TestCase):
    def test_have_a_least_a_median_and_a_latest_value(self) -> None:
        figures = Figures("A 3\nB 1.5\n\nA 1 ignored\nA 2\n")
        self.assertEqual((1, 2, 2), (figures.least("A"), figures.median("A"), figures.latest("A")))
        self.assertEqual(1.5, figures.least("B"))
        self.assertEqual([], figures.missing)

    def test_keep_what_is_missing_once(self) -> None:
        figures = Figures("")
        self.assertEqual((1, 1), (figures.least("A"), figures.latest("A")))
        self.assertEqual(["A"], figures.missing)
