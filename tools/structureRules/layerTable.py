"""The layers of the tree as data: which folder may include what. Edit this file when a folder comes, goes or moves."""

from dataclasses import dataclass, field

# What a host includes. These headers get installed.
PUBLIC_HEADERS: list[str] = [
    "src/platform/wideChar.h",
    "src/platform/callConv.h",
    "src/frame/identifiers.h",
    "src/frame/interfaces.h",
    "src/frame/values.h",
]

# One row per folder: what its files may include besides files of the same row. A file belongs to the row with the
# longest matching folder. An entry is the folder of another row (without the rows below it), a single header, or PUBLIC
# for the headers above. A file that belongs to no row is reported.
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
    "host/output": ["host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    "host/live": ["host/policy", "host/document", "host/system", "PUBLIC"],
    "host/cli": ["host/live", "host/output", "host/decide", "host/policy", "host/document", "host/system", "PUBLIC"],
    # Tests: the kit, then a row for each subsystem
    "tests": [],
    "tests/hostKit": ["src/mordRev", "src/logging", "src/frame", "src/platform"],
    "tests/platform": ["src/platform"],
    "tests/frame": ["tests/hostKit", "src/frame", "src/logging", "src/platform"],
    "tests/text": ["tests/hostKit", "src/text"],
    "tests/logging": ["tests/hostKit", "src/mordRev", "src/logging", "src/platform"],
    "tests/native": ["tests/hostKit", "tests/fuzz", "src/mordRev", "src/native", "src/logging", "src/frame",
                     "src/platform"],
    "tests/mordRev": ["tests/hostKit", "tests/host", "src/mordRev", "src/logging", "src/frame"],
    "tests/siblings": ["tests/hostKit", "siblings", "siblings/zelkBase", "src/frame", "src/platform"],
    "tests/host": ["tests/hostKit", "host/cli", "host/live", "host/output", "host/decide", "host/policy",
                   "host/document", "host/system", "PUBLIC", "siblings/zelkBase/hostLog.h"],
    "tests/inspect": ["tests/native", "tests/host", "inspect", "src/native"],
    # The model knows the interfaces and nothing of the library's inside.
    "tests/model": ["tests/hostKit", "src/frame/interfaces.h", "src/platform/wideChar.h"],
    "tests/race": ["tests/hostKit", "tests/model", "src/mordRev", "src/text", "src/frame"],
    "tests/product": ["tests/hostKit", "tests/native"],
    # The test of the binary interface has its own notion of it; one file links both.
    "tests/abi": ["tests/hostKit", "src/frame/interfaces.h"],
    "tests/docs": ["tests/hostKit"],
    "tests/schema": ["tests/docs", "tests/hostKit"],
    "tests/fuzz": [],
    # Fuzzers, benches, examples
    "fuzz": ["src/native", "src/platform"],
    "fuzz/iniFile": ["fuzz", "src/platform"],
    "fuzz/receiver": ["fuzz", "src/mordRev", "src/logging", "src/frame", "src/platform"],
    "bench": ["host/decide", "host/policy", "host/document", "host/system", "siblings/zelkBase/hostLog.h",
              "src/mordRev", "src/frame"],
    "examples": ["PUBLIC"],
}

# Includes that the rows forbid and the tree has all the same, each with its reason: (file, what it includes) to reason.
# The list is to shrink. An entry that the tree no longer needs is reported.
EXCEPTIONS: dict[tuple[str, str], str] = {
    ("src/frame/createZelkObject.cpp", "src/mordRev/src/mordRev.h"): "the export makes the receiver",
    ("tests/model/caseRun.cpp", "src/mordRev/src/mordRev.h"): "runs a case on the library",
    ("tests/model/caseRun.cpp", "src/logging/logState.h"): "runs a case with and without logging",
    # The tests replay the inputs of the fuzzers.
    ("tests/fuzz/iniFileCorpusTest.cpp", "fuzz/targets.h"): "replays kept inputs",
    ("tests/fuzz/receiverCorpusTest.cpp", "fuzz/targets.h"): "replays kept inputs",
    # The fuzzers use the model and the scripted systems of the tests.
    ("fuzz/gatePlacesNarrow.cpp", "tests/native/published/queryLayouts.h"): "the scripted process",
    ("fuzz/gatePlacesNarrow.cpp", "tests/native/scripted/gateHalf.h"): "the scripted process",
    ("fuzz/memoryPlaces.h", "tests/native/scripted/processImage.h"): "the scripted process",
    ("fuzz/targetMemory.cpp", "tests/native/scripted/lowStack.h"): "the scripted process",
    ("fuzz/targetMemory.cpp", "tests/native/scripted/pairings.h"): "the scripted process",
    ("fuzz/receiver/documents.cpp", "tests/hostKit/midSets.h"): "the model's side of a comparison",
    ("fuzz/receiver/receiverPair.cpp", "tests/hostKit/quietSystem.h"): "the model's side of a comparison",
    ("fuzz/receiver/receiverPair.h", "tests/hostKit/receiverFields.h"): "the model's side of a comparison",
    ("fuzz/receiver/receiverPair.h", "tests/model/receiverModel.h"): "the model's side of a comparison",
    ("fuzz/receiver/receiverPair.h", "tests/model/siblingState.h"): "the model's side of a comparison",
    ("fuzz/receiver/receiverPair.h", "tests/model/trace.h"): "the model's side of a comparison",
    ("fuzz/receiver/records.h", "tests/model/trace.h"): "the model's side of a comparison",
    ("fuzz/receiver/hugeSizes.cpp", "tests/mordRev/systemAllocator.h"): "refuses huge sizes",
}

# Where a quoted include is looked for, in this order, by the folder of the file that has it; the longest match counts.
# "." is the file's own folder, "" the root of the tree. The library's own includes are paths from src.
SEARCHED: dict[str, list[str]] = {
    "src": ["src"],
    "siblings": [".", "siblings", "src"],
    "host": [".", "host", "src", "siblings"],
    "inspect": [".", "inspect", "src"],
    "tests": [".", "tests", "", "src", "host", "siblings", "inspect"],
    "tests/abi": [".", "tests", "", "src", "tests/abi/linux"],  # a folder of the same headers for each system
    "fuzz": [".", "", "tests", "src"],
    "bench": [".", "bench", "host", "src", "siblings"],
    "examples": [".", "src"],
}

# The folders that are checked.
CHECKED: list[str] = ["src", "siblings", "host", "inspect", "tests", "bench", "fuzz", "examples", "tools"]

# The two headers that may test the platform.
PLATFORM_TESTS: list[str] = ["src/platform/wideChar.h", "src/platform/callConv.h"]

# The one header of the library that includes RapidJSON.
JSON_HEADER = "src/mordRev/src/json.h"


@dataclass(frozen=True)
class LayerTable:
    """All of the above, for the rules; the tests of the rules have tables of their own."""

    may_include: dict[str, list[str]] = field(default_factory=lambda: MAY_INCLUDE)
    exceptions: dict[tuple[str, str], str] = field(default_factory=lambda: EXCEPTIONS)
    searched: dict[str, list[str]] = field(default_factory=lambda: SEARCHED)
    public_headers: list[str] = field(default_factory=lambda: PUBLIC_HEADERS)
    platform_tests: list[str] = field(default_factory=lambda: PLATFORM_TESTS)
    json_header: str = JSON_HEADER
