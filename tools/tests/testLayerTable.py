"""The real layer table is consistent and matches the tree."""

import unittest
from pathlib import Path

from structureRules import layerTable
from structureRules.includeRules import longest_prefix

ROOT = Path(__file__).resolve().parents[2]
ORDER = ["src/platform", "src/frame", "src/text", "src/logging", "src/mordRev"]  # each may include those before it


class TheTable(unittest.TestCase):
    def test_names_what_is_there(self) -> None:
        for row, allowed in layerTable.MAY_INCLUDE.items():
            self.assertTrue((ROOT / row).is_dir(), row)
            for name in allowed:
                is_row = name in layerTable.MAY_INCLUDE
                self.assertTrue(is_row or name == "PUBLIC" or (ROOT / name).is_file(), f"{row}: {name}")
        for file, included in layerTable.EXCEPTIONS:
            self.assertTrue((ROOT / file).is_file(), file)
            self.assertTrue((ROOT / included).is_file(), included)
        for file in [*layerTable.PUBLIC_HEADERS, *layerTable.PLATFORM_TESTS, layerTable.JSON_HEADER]:
            self.assertTrue((ROOT / file).is_file(), file)

    def test_leads_downward_in_the_library(self) -> None:
        for number, folder in enumerate(ORDER):
            allowed = set(layerTable.MAY_INCLUDE[folder]) - {"src/native"}
            self.assertLessEqual(allowed, set(ORDER[:number]), folder)
        self.assertEqual(["src/platform"], layerTable.MAY_INCLUDE["src/native"])

    def test_has_no_circles(self) -> None:
        seen: dict[str, bool] = {}  # to whether the row is still being followed

        def follow(row: str, way: list[str]) -> None:
            self.assertFalse(seen.get(row, False), f"a circle: {way + [row]}")
            if row in seen:
                return
            seen[row] = True
            for name in layerTable.MAY_INCLUDE[row]:
                if name != "PUBLIC":
                    below = longest_prefix(name + "/x", layerTable.MAY_INCLUDE)
                    follow(below, way + [row])
            seen[row] = False

        for row in layerTable.MAY_INCLUDE:
            follow(row, [])

    def test_keeps_the_product_from_what_surrounds_it(self) -> None:
        for row, allowed in layerTable.MAY_INCLUDE.items():
            if row.startswith("src/"):
                self.assertTrue(all(name.startswith("src/") for name in allowed), row)
            elif not row.startswith("tests"):
                # The benchmarks, which are no product either, count allocations with the heap of the tests.
                tests = ["tests/kit/heap"] if row == "bench" else []
                self.assertEqual([name for name in allowed if name.startswith("tests")], tests, row)
            if not row.startswith("tests/fuzz"):
                self.assertFalse(any(name.startswith("tests/fuzz") for name in allowed), row)
