"""Rules about the text of a file: length, width, habits, tests of the platform."""

import re
from collections.abc import Iterator

from structureRules.breach import Breach
from structureRules.layerTable import LayerTable
from structureRules.sourceFile import SourceFile

MOST_LINES = 500
MOST_COLUMNS = 120

# The brackets keep these patterns from matching this file.
LEFT_WORK = re.compile(r"T[O]DO|FIX[M]E")
NO_TEST = re.compile(r"GTEST_[S]KIP|SUCCEED\(|DIS[A]BLED_|(EXPECT|ASSERT)_TRUE\(true\)")
NO_PYTHON_TEST = re.compile(r"@unittest\.(skip|expectedFailure)|\.skipTest\(|assertTrue\(True\)")
TEST_CASE = re.compile(r"(TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P)\(")
TEST_FILE = re.compile(r"tests/.*Test(Win32|Posix|Linux)?\.cpp$")
BANNER = re.compile(r"\s*(//|/\*|\*|#)\s*[-=*#~/_]{4,}")
GUARD = re.compile(r"\b(try|catch)\b")
STRING_OR_COMMENT = re.compile(r'"(\\.|[^"\\])*"|//.*')
CONDITION = re.compile(r"[ \t]*#[ \t]*(if|ifdef|ifndef|elif)")
PLATFORM_MACRO = re.compile(
    r"_WIN(32|64)|\b(WIN32|WIN64|WINVER|unix|linux)\b|_WIN32_WINNT|__MINGW|__CYGWIN__"
    r"|__linux|__unix|__APPLE__|__FreeBSD__|__ANDROID__|_POSIX_|_MSC_|__GNUC__|__GLIBC__|__GLIBCXX__|__clang__"
    r"|__i[3-6]86|__x86_64|__amd64|__arm|__aarch64__|_M_IX86|_M_X64|_M_AMD64|_M_ARM|_?_LP64|__ILP32__"
    r"|__SIZEOF_POINTER__|__WORDSIZE|__BYTE_ORDER")


def lengths(source: SourceFile) -> Iterator[Breach]:
    """The number of lines, and their width in characters."""
    if len(source.lines) > MOST_LINES:
        yield Breach(source.path, len(source.lines), f"more than {MOST_LINES} lines")
    for number, line in enumerate(source.lines, 1):
        if len(line) > MOST_COLUMNS:
            yield Breach(source.path, number, f"more than {MOST_COLUMNS} columns")


def habits(source: SourceFile) -> Iterator[Breach]:
    """Rules about single lines."""
    in_src = source.is_below("src") and source.is_code
    for number, line in enumerate(source.lines, 1):
        if LEFT_WORK.search(line):
            yield Breach(source.path, number, "work is done or it is not in the tree")
        if BANNER.match(line):
            yield Breach(source.path, number, "comments have no banners")
        if in_src and GUARD.search(STRING_OR_COMMENT.sub("", line)):
            yield Breach(source.path, number, "the library has no try: a local guard closes and releases")


def public_headers(source: SourceFile, table: LayerTable) -> Iterator[Breach]:
    """The headers for hosts do not use the standard library."""
    if source.path in table.public_headers:
        for number, line in enumerate(source.lines, 1):
            if "std::" in STRING_OR_COMMENT.sub("", line):
                yield Breach(source.path, number, "a public header uses nothing of the standard library")


def platform_conditions(source: SourceFile, table: LayerTable) -> Iterator[Breach]:
    """Preprocessor conditions, including their continuation lines, do not test the platform."""
    if not source.is_code or source.path in table.platform_tests:
        return
    condition, first = "", 0
    for number, line in enumerate(source.lines, 1):
        if not condition:
            if not CONDITION.match(line):
                continue
            first = number
        condition += " " + line
        if line.endswith("\\"):
            continue
        if PLATFORM_MACRO.search(condition):
            yield Breach(source.path, first, "the platform is tested in wideChar.h and callConv.h alone; "
                                             "other code picks a body by its file")
        condition = ""


def test_cases(source: SourceFile) -> Iterator[Breach]:
    """Test cases run, can fail, and are in files with the name of a test."""
    pattern = NO_TEST if source.is_below("tests") else NO_PYTHON_TEST if source.is_below("tools/tests") else None
    if pattern:
        for number, line in enumerate(source.lines, 1):
            if pattern.search(line):
                yield Breach(source.path, number, "a test is run and can fail")
    if not source.is_code:
        return
    has_cases = any(TEST_CASE.match(line) for line in source.lines)
    if TEST_FILE.match(source.path):
        if not has_cases and not any("static_assert(" in line for line in source.lines):
            yield Breach(source.path, 1, "a file that is named xTest.cpp has test cases")
    elif has_cases:
        yield Breach(source.path, 1, "test cases are in a file of tests that is named xTest.cpp")
