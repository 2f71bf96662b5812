"""A small tree that the tests of the structure rules change."""

import tempfile
import unittest
from pathlib import Path

from structureRules.layerTable import LayerTable
from structureRules.sourceTree import SourceTree
from structureRules.treeCheck import check

# A table with the same kinds of rows as the real one.
TABLE = LayerTable(
    may_include={
        "src/platform": [],
        "src/frame": ["src/platform"],
        "src/mordRev": ["src/frame", "src/platform"],
        "siblings": ["src/frame", "src/platform"],
        "siblings/one": ["siblings"],
        "host/low": ["PUBLIC"],
        "host/high": ["host/low", "PUBLIC"],
        "tests/kit": ["src/frame"],
        "tests/model": ["tests/kit", "src/frame/interfaces.h"],
        "bench": [],
    },
    exceptions={},
    searched={
        "src": ["src"],
        "siblings": [".", "siblings", "src"],
        "host": [".", "host", "src"],
        "tests": [".", "tests", "", "src"],
        "bench": [".", "", "tests"],
    },
    public_headers=["src/platform/wideChar.h", "src/frame/interfaces.h"],
    platform_tests=["src/platform/wideChar.h"],
    json_header="src/mordRev/src/json.h",
)

# One file in each row; none breaks a rule.
FILES = {
    "src/platform/wideChar.h": "#ifdef _WIN32\n#endif\n",
    "src/platform/platform.h": "",
    "src/frame/interfaces.h": '#include <stdint.h>\n#include "platform/wideChar.h"\n',
    "src/frame/factory.h": '#include <string>\n#include "frame/interfaces.h"\n',
    "src/mordRev/src/json.h": "#include <rapidjson/document.h>\n",
    "src/mordRev/src/receiver.cpp": '#include "frame/factory.h"\n#include "mordRev/src/json.h"\n',
    "siblings/shared.h": '#include "frame/factory.h"\n',
    "siblings/one/service.h": '#include "shared.h"\n',
    "host/low/text.h": "",
    "host/high/main.cpp": '#include "low/text.h"\n',
    "tests/kit/fake.h": '#include "frame/factory.h"\n',
    "tests/model/model.h": '#include "kit/fake.h"\n#include "frame/interfaces.h"\n',
    "bench/limits.h": "",
    "CMakeLists.txt": "add_library(all src/mordRev/src/receiver.cpp host/high/main.cpp # notThis.cpp\n)\n",
    "src/CMakeLists.txt": "target_sources(all PRIVATE planted${body}.cpp planted.c)\n",
}


class PlantedTreeTest(unittest.TestCase):
    """Runs all rules over a copy of the small tree, which each test changes."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        for path, text in FILES.items():
            self.write(path, text)

    def write(self, path: str, text: str) -> None:
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def reports(self, table: LayerTable = TABLE) -> list[str]:
        tree = SourceTree(self.root, ["src", "siblings", "host", "tests", "bench", "tools"])
        return [str(breach) for breach in check(tree, table)]

    def refuses(self, path: str, text: str, *messages: str, table: LayerTable = TABLE) -> None:
        """The rules report exactly the messages ("line: what") for a file with this text, and nothing else."""
        self.write(path, text)
        self.assertEqual([f"{path}:{message}" for message in messages], self.reports(table))

    def accepts(self, path: str, text: str, table: LayerTable = TABLE) -> None:
        """The rules report nothing for a file with this text."""
        self.refuses(path, text, table=table)
