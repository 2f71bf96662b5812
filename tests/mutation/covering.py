"""The source files that are mutated, and the test programs that cover each, the fast and specific ones first."""

import re
from pathlib import Path

MUTATED = ["src/mordRev/src", "src/logging", "src/text", "src/frame", "src/native", "src/platform"]

# Built for Windows only. procPathWin32.cpp is not among them: its tests build it on Linux too.
NOT_BUILT = {"src/platform/platformWin32.cpp", "src/platform/processApiWin32.cpp"}

RECEIVER = ["mordRevTest", "mordRevFirstUseTest", "mordRevScriptedTest", "mordRevMemoryTest", "lifecycleMemoryTest",
            "productTest", "modelTest", "differentialTest", "abiTest"]
LOGGING = ["loggingTest", "loggingScriptedTest", "loggingFirstUseTest", "mordRevMemoryTest", "lifecycleMemoryTest",
           "mordRevTest", "productTest", "abiTest", "longRecordTest"]
TEXT = ["textTest", "textLookupTest", "longTextTest", "mordRevMemoryTest", "mordRevTest", "productTest"]
FRAME = ["frameTest", "frameFirstUseTest", "frameModulesTest", "frameMemoryTest", "textLookupTest",
         "mordRevFirstUseTest", "lifecycleMemoryTest", "productTest", "abiTest"]
PATH_LOOKUP = ["native32FirstUseTest", "native64FirstUseTest"]
NATIVE_32 = ["native32Test", "native32FirstUseTest", "firstNative32Test", "inspect32Test"]
NATIVE_64 = ["native64Test", "native64FirstUseTest", "firstNative64Test", "inspect64Test"]
NATIVE = [program for both in zip(NATIVE_32, NATIVE_64) for program in both]
GATE = ["native32FirstUseTest", "firstNative32Test", "native32Test", "inspect32Test"]
PLATFORM = ["platformTest", "frameModulesTest", "textTest", "loggingTest", "iniFileCorpusTest", "loggingFirstUseTest",
            "productTest", "mordRevTest"]

# The first pattern that matches a file names its programs. The headers for hosts are compiled into most tests as well:
# the programs that share no header with the library come first there.
COVERING = [
    (r"src/mordRev/src/procPathWin32\.cpp", PATH_LOOKUP),
    (r"src/frame/values\.h", ["abiTest", "modelTest", "productTest"] + RECEIVER),
    (r"src/mordRev/", RECEIVER),
    (r"src/logging/", LOGGING),
    (r"src/text/", TEXT),
    (r"src/frame/(interfaces|identifiers)\.h", ["abiTest", "productTest"] + FRAME),
    (r"src/frame/", FRAME),
    (r"src/native/(gate|nativeWow64|foundValue)", GATE),
    (r"src/native/(x86Native|chooseNativeX86)", NATIVE_32),
    (r"src/native/chooseNativeX64", NATIVE_64),
    (r"src/native/(threads|wow64Redirection)", PATH_LOOKUP + NATIVE),
    (r"src/native/", NATIVE),
    (r"src/platform/processApi\.h", NATIVE),
    (r"src/platform/", PLATFORM),
]

# What tests load at run time. A build of a test program need not make them current; the run builds them with it.
LOADED = ["mordRev", "relayZelkBase", "relayFerrocore", "relayNoFactory", "relayZelkBaseNoFactory",
          "relayBorrowedFactory", "modelRelayZelkBase", "modelRelayFerrocore", "abiFakeZelkBase", "abiFakeFerrocore",
          "abiFakeModuleBase"]


def covering(name: str) -> list[str]:
    """Returns the test programs that cover a file, in the order in which to run them."""
    programs = next(programs for pattern, programs in COVERING if re.match(pattern, name))
    return list(dict.fromkeys(programs))


def mutatedFiles(root: Path) -> list[Path]:
    found = [path for folder in MUTATED for path in sorted((root / folder).glob("*")) if path.suffix in (".cpp", ".h")]
    return [path for path in found if str(path.relative_to(root)) not in NOT_BUILT]
