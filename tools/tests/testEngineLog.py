"""The reading of libFuzzer's messages."""

import unittest

from fuzzRuns.engineLog import EngineLog

PASSED = """INFO: Seed: 1
#2048 pulse  cov: 10 ft: 12 corp: 3/9b exec/s: 1024 rss: 40Mb
Done 5000 runs in 61 second(s)
stat::number_of_executed_units: 5000
stat::average_exec_per_sec:     81
stat::new_units_added:          7
stat::slowest_unit_time_sec:    0
"""


class Log(unittest.TestCase):
    def test_has_the_statistics(self) -> None:
        log = EngineLog(PASSED)
        self.assertEqual((5000, 81, 7, (5000, 61)), (log.executed, log.rate, log.new_inputs, log.done))

    def test_has_the_seed(self) -> None:
        self.assertEqual(1, EngineLog(PASSED).seed)
        self.assertEqual(4294967295, EngineLog(PASSED.replace("Seed: 1", "Seed: 4294967295")).seed)
        self.assertIsNone(EngineLog("").seed)

    def test_is_long_enough_by_inputs_or_by_seconds(self) -> None:
        for runs, seconds in ((5000, 0), (0, 61), (0, 60), (4999, 0), (5000, 600), (9999, 60)):
            self.assertEqual("", EngineLog(PASSED).shortfall(runs, seconds))

    def test_is_too_short_with_fewer_inputs_than_asked_for(self) -> None:
        self.assertEqual("the engine ran 5000 inputs in 61 s, and was asked for 5001 inputs",
                         EngineLog(PASSED).shortfall(5001, 0))

    def test_is_too_short_with_fewer_seconds_than_asked_for(self) -> None:
        self.assertEqual("the engine ran 5000 inputs in 61 s, and was asked for 62 s",
                         EngineLog(PASSED).shortfall(0, 62))
        self.assertEqual("the engine ran 5000 inputs in 61 s, and was asked for 5001 inputs or 62 s",
                         EngineLog(PASSED).shortfall(5001, 62))

    def test_is_too_short_without_its_end(self) -> None:
        for text in ("", PASSED.replace("Done", "Gone"), PASSED.replace("stat::", "")):
            self.assertEqual("the engine ended without its final statistics", EngineLog(text).shortfall(1, 1))

    def test_has_the_first_words_of_a_finding(self) -> None:
        words = ["does not hold: x == y", "==7==ERROR: AddressSanitizer: heap-buffer-overflow",
                 "a.cpp:3: runtime error: y"]
        log = EngineLog("\n".join(["INFO: x", *words, "artifact; Test unit written to ./crash-1"]))
        self.assertEqual(words, log.findings)
