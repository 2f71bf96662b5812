"""The share of branches and conditions that the tests must take, by folder. docs/assurance.md has the same figures."""

from typing import NamedTuple


class Threshold(NamedTuple):
    """In per cent; None if nothing is required."""

    branches: float | None
    conditions: float | None  # shown to decide independently (MC/DC)


# src/native is counted twice, as built for 32-bit and for 64-bit callers.
THRESHOLDS: dict[str, Threshold] = {
    "src/frame": Threshold(100, 100),
    "src/mordRev": Threshold(100, 100),
    "src/logging": Threshold(100, 100),
    "src/text": Threshold(100, 100),
    "src/native, 32-bit caller": Threshold(100, 100),
    "src/native, 64-bit caller": Threshold(100, 100),
    "src/platform": Threshold(None, None),
}

# The sources that are built for one of the two only. A program without any of them counts for both.
CALLERS: dict[str, str] = {
    "src/native/chooseNativeX86.cpp": "src/native, 32-bit caller",
    "src/native/x86Native.cpp": "src/native, 32-bit caller",
    "src/native/nativeWow64.cpp": "src/native, 32-bit caller",
    "src/native/gateModules.cpp": "src/native, 32-bit caller",
    "src/native/gateResolve.cpp": "src/native, 32-bit caller",
    "src/native/gateWrappers.cpp": "src/native, 32-bit caller",
    "src/native/chooseNativeX64.cpp": "src/native, 64-bit caller",
}
