"""What share of each folder the tests have to take. The figures are those of docs/assurance.md."""

from typing import NamedTuple


class Promise(NamedTuple):
    """In per cent; None where nothing is promised."""

    branches: float | None
    conditions: float | None  # shown to decide by themselves (MC/DC)


# src/native is counted twice, as the programs of a 32-bit and of a 64-bit caller have it.
PROMISES: dict[str, Promise] = {
    "src/frame": Promise(100, 100),
    "src/mordRev": Promise(100, 100),
    "src/logging": Promise(100, 100),
    "src/text": Promise(100, 100),
    "src/native, 32-bit caller": Promise(100, 100),
    "src/native, 64-bit caller": Promise(100, 100),
    "src/platform": Promise(None, None),
}

# The sources that only the programs of one of the two have. A program with none of them counts for both.
CALLERS: dict[str, str] = {
    "src/native/chooseNativeX86.cpp": "src/native, 32-bit caller",
    "src/native/x86Native.cpp": "src/native, 32-bit caller",
    "src/native/nativeWow64.cpp": "src/native, 32-bit caller",
    "src/native/gateModules.cpp": "src/native, 32-bit caller",
    "src/native/gateResolve.cpp": "src/native, 32-bit caller",
    "src/native/gateWrappers.cpp": "src/native, 32-bit caller",
    "src/native/chooseNativeX64.cpp": "src/native, 64-bit caller",
}
