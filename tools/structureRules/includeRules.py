"""Rules about #include directives: layers, public headers, RapidJSON, system headers."""

import posixpath
import re
from collections.abc import Iterator

from structureRules.breach import Breach
from structureRules.layerTable import LayerTable
from structureRules.sourceFile import Include, SourceFile

CPP_STANDARD = re.compile(r"[a-z_]+$")
C_STANDARD = {f"{name}.h" for name in ("assert", "ctype", "errno", "float", "inttypes", "limits", "math", "setjmp",
                                       "signal", "stdarg", "stdbool", "stddef", "stdio", "stdlib", "string", "time")}
LIBRARIES = ("rapidjson/", "CLI/", "gtest/", "gmock/")
SYSTEM_BODY = re.compile(r".*(Win32|Posix|Linux)\.(cpp|c|h)$")
PLATFORM_BODY = re.compile(r"src/platform/[A-Za-z0-9]*(Win32|Posix)\.cpp$")


def longest_prefix(path: str, folders: dict[str, list[str]]) -> str:
    """The longest of the folders that contains the path, or an empty text."""
    folder = posixpath.dirname(path)
    while folder and folder not in folders:
        folder = posixpath.dirname(folder)
    return folder


class IncludeRules:
    """Checks one file after the other. `paths` are all files that an include can refer to."""

    def __init__(self, table: LayerTable, paths: set[str]) -> None:
        self._table = table
        self._paths = paths
        self._used_exceptions: set[tuple[str, str]] = set()

    def breaches(self, source: SourceFile) -> Iterator[Breach]:
        """The breaches of a file, at most one for each include."""
        if not source.is_code:
            return
        if not longest_prefix(source.path, self._table.may_include):
            yield Breach(source.path, 1, f"the layer table has no row for {source.folder}")
            return
        for include in source.includes:
            if message := self._fault(source, include):
                yield Breach(source.path, include.line, message)

    def stale_exceptions(self) -> Iterator[Breach]:
        """The exceptions of the table that no file needed. Call it after all files have been checked."""
        for file, included in sorted(self._table.exceptions.keys() - self._used_exceptions):
            yield Breach("tools/structureRules/layerTable.py", 1,
                         f"the exception is not needed any more: {file} includes {included}")

    def _fault(self, source: SourceFile, include: Include) -> str:
        """The message for an include that breaks a rule, otherwise an empty text."""
        target = self._resolve(source, include)
        is_src = source.is_below("src")
        if source.path in self._table.public_headers:
            if target not in self._table.public_headers and (include.name != "stdint.h" or include.quoted):
                return f"a public header includes <stdint.h> and public headers alone, not {include.name}"
        if target is None:
            if include.quoted and is_src:
                return ("src includes its own sources by their path from src, and nothing else of the tree, "
                        f"not {include.name}")
            if include.quoted:
                return f"the tree has no file {include.name} where this folder looks for it"
            return self._fault_of_foreign(source, include)
        if not self._may_include(source.path, target):
            return f"{longest_prefix(source.path, self._table.may_include)} may not include {target}"
        if target == self._table.json_header and source.is_header:
            return f"{target} is included by .cpp files alone"
        return ""

    def _fault_of_foreign(self, source: SourceFile, include: Include) -> str:
        """The same for a header that is not in this tree."""
        is_src = source.is_below("src")
        if include.name.startswith("rapidjson/"):
            if source.path != self._table.json_header and (is_src or source.is_header):
                return f"RapidJSON is included by {self._table.json_header} and by .cpp files outside of src alone"
            return ""
        if include.name == "stdint.h" or CPP_STANDARD.match(include.name):
            return ""
        if is_src:
            if not PLATFORM_BODY.match(source.path):
                return f"headers of the system are included by the platform's bodies alone, not <{include.name}>"
            return ""
        if source.is_below("tests") or include.name.startswith(LIBRARIES):
            return ""
        if source.suffix == ".c" and include.name in C_STANDARD:
            return ""
        if not SYSTEM_BODY.match(source.name):
            return f"only a file that is named for a system (xWin32, xPosix, xLinux) includes <{include.name}>"
        return ""

    def _resolve(self, source: SourceFile, include: Include) -> str | None:
        """The path of the included file, or None if it is not in this tree."""
        for place in self._table.searched.get(longest_prefix(source.path, self._table.searched), ["."]):
            if place == "." and not include.quoted:
                continue
            folder = source.folder if place == "." else place
            path = posixpath.join(folder, include.name)
            if path in self._paths:
                return path
        return None

    def _may_include(self, path: str, target: str) -> bool:
        rows = self._table.may_include
        own, other = longest_prefix(path, rows), longest_prefix(target, rows)
        allowed = rows[own]
        if other == own or other in allowed or target in allowed:
            return True
        if "PUBLIC" in allowed and target in self._table.public_headers:
            return True
        if (path, target) in self._table.exceptions:
            self._used_exceptions.add((path, target))
            return True
        return False
