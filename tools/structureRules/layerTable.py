"""The layers of the tree as data: which folder may include what. Edit it when a folder is added, removed or moved."""

from dataclasses import dataclass, field

# The headers for hosts, which are installed.
PUBLIC_HEADERS: list[str] = [
    "src/platform/wideChar.h",
    "src/platform/callConv.h",
    "src/frame/identifiers.h",
    "src/frame/interfaces.h",
    "src/frame/values.h",
]

KIT = ["tests/kit/host", "tests/kit/siblings", "tests/kit/system", "tests/kit/heap", "tests/kit/text"]

# One row per folder: what its files may include besides files of the same row. A file belongs to the row with the
# longest matching folder. An entry is the folder of another row (without the rows below it), a single header, or PUBLIC
# for the headers above. A file that belongs to no row is an error.
MAY_INCLUDE: dict[str, list[str]] = {
    # The library
    "src/platform": [],
    "src/frame": ["src/platform"],
    "src/text": ["src/frame", "src/platform"],
    "src/logging": ["src/text", "src/frame", "src/platform"],
    "src/native": ["src/platform"],
    "src/mordRev": ["src/native", "src/logging", "src/text", "src/frame", "src/platform"],
    # The stand-ins of the sibling libraries
    "siblings": ["src/frame", "src/platform"],
    "siblings/ferrocore": ["siblings", "src/frame", "src/platform"],
    "siblings/zelkBase": ["siblings", "src/frame", "src/platform"],
    # mordinspect
    "inspect": ["src/native", "src/platform"],
    # mordhost, from the lowest layer to the highest
    "host/system": [],
    "host/document": ["host/system"],
    "host/policy": ["host/document", "host/system", "PUBLIC"],
    "host/decide": ["host/policy", "host/document", "host/system", "PUBLIC", "siblings/zelkBase/hostLog.h"],
    "host/review": ["host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    "host/explain": ["host/review", "host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    "host/usage": ["host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    "host/output": ["host/explain", "host/usage", "host/review", "host/decide", "host/policy", "host/document",
                    "host/system", "PUBLIC"],
    "host/compare": ["host/output", "host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    "host/live": ["host/policy", "host/document", "host/system", "PUBLIC"],
    "host/arguments": ["host/output", "host/policy"],
    "host/pages": ["host/arguments", "host/policy", "host/system"],
    "host/cli": ["host/arguments", "host/compare", "host/live", "host/output", "host/explain", "host/usage",
                 "host/review", "host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    # Tests: the kit, then a row for each subsystem
    "tests": [],
    "tests/kit/text": ["src/platform"],
    "tests/kit/heap": ["tests/kit/system"],
    "tests/kit/siblings": ["tests/kit/text", "src/frame", "src/platform"],
    "tests/kit/system": ["tests/kit/siblings", "tests/kit/text", "src/mordRev", "src/native", "src/logging",
                         "src/frame", "src/platform"],
    "tests/kit/host": ["tests/kit/siblings", "tests/kit/system", "tests/kit/text", "src/mordRev", "src/logging",
                       "src/frame", "src/platform"],
    "tests/unit/platform": ["src/platform"],
    "tests/unit/frame": [*KIT, "src/frame", "src/logging", "src/platform"],
    "tests/unit/text": [*KIT, "src/text"],
    "tests/unit/logging": [*KIT, "src/mordRev", "src/logging", "src/platform"],
    "tests/unit/native": [*KIT, "src/mordRev", "src/native", "src/logging", "src/frame", "src/platform"],
    "tests/unit/mordRev": [*KIT, "src/mordRev", "src/logging", "src/frame"],
    "tests/unit/siblings": [*KIT, "siblings", "siblings/zelkBase", "src/frame", "src/platform"],
    "tests/unit/host": [*KIT, "host/pages", "host/arguments", "host/cli", "host/compare", "host/live", "host/output",
                        "host/explain", "host/usage", "host/review", "host/decide", "host/policy", "host/document",
                        "host/system", "PUBLIC", "siblings/zelkBase/hostLog.h"],
    "tests/unit/inspect": [*KIT, "tests/unit/native", "inspect", "src/native"],
    # The model shares only the headers of the interfaces with the library.
    "tests/model": ["tests/kit/siblings", "tests/kit/system/temporaryDirectory.h", "tests/kit/text/runSeed.h",
                    "src/frame/interfaces.h", "src/platform/wideChar.h"],
    "tests/race": [*KIT, "src/mordRev", "src/logging", "src/text", "src/frame", "src/platform"],
    "tests/product": [*KIT, "tests/unit/native"],
    # The test of the binary interface shares no header with the library; one file checks that both agree.
    "tests/abi": ["tests/kit/siblings", "src/frame/interfaces.h"],
    "tests/docs": KIT,
    "tests/docs/schema": ["tests/docs", *KIT, "host/decide"],
    # The fuzzers compare with the model, and use the scripted process. Nothing includes them.
    "tests/fuzz": ["src/platform"],
    "tests/fuzz/iniFile": ["tests/fuzz", "src/platform"],
    "tests/fuzz/receiver": ["tests/fuzz", "tests/model", *KIT, "src/mordRev", "src/logging", "src/frame",
                            "src/platform"],
    "tests/fuzz/targetMemory": ["tests/fuzz", *KIT, "src/native", "src/platform"],
    # Benches, examples
    "bench": ["host/decide", "host/policy", "host/document", "host/system", "siblings/zelkBase/hostLog.h",
              "src/mordRev", "src/frame", "tests/kit/heap"],
    "examples": ["PUBLIC"],
}

# The includes that break a row, each with its reason: (file, included file) to reason. The list should shrink. An entry
# that the tree no longer needs is an error.
EXCEPTIONS: dict[tuple[str, str], str] = {
    ("src/frame/createZelkObject.cpp", "src/mordRev/src/mordRev.h"): "the export makes the receiver",
}

# The folders to search for a quoted include, in this order, by the folder of the including file; the longest match
# counts. "." is the file's own folder, "" the root of the tree. The library includes its own headers by their path from
# src.
SEARCHED: dict[str, list[str]] = {
    "src": ["src"],
    "siblings": [".", "siblings", "src"],
    "host": [".", "host", "src", "siblings"],
    "inspect": [".", "inspect", "src"],
    "tests": [".", "tests", "", "src", "host", "siblings", "inspect"],
    "tests/abi": [".", "tests", "", "src", "tests/abi/linux"],  # a folder of the same headers for each system
    "bench": [".", "bench", "host", "src", "siblings", "tests"],
    "examples": [".", "src"],
}

# The folders that are checked.
CHECKED: list[str] = ["src", "siblings", "host", "inspect", "tests", "bench", "examples", "tools"]

# The two headers that may test the platform.
PLATFORM_TESTS: list[str] = ["src/platform/wideChar.h", "src/platform/callConv.h"]

# The one header of the library that includes RapidJSON.
JSON_HEADER = "src/mordRev/src/json.h"


@dataclass(frozen=True)
class LayerTable:
    """The tables above, as the rules use them. The tests of the rules pass their own tables."""

    may_include: dict[str, list[str]] = field(default_factory=lambda: MAY_INCLUDE)
    exceptions: dict[tuple[str, str], str] = field(default_factory=lambda: EXCEPTIONS)
    searched: dict[str, list[str]] = field(default_factory=lambda: SEARCHED)
    public_headers: list[str] = field(default_factory=lambda: PUBLIC_HEADERS)
    platform_tests: list[str] = field(default_factory=lambda: PLATFORM_TESTS)
    json_header: str = JSON_HEADER
