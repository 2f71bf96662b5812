"""Length, width, single lines, conditions on the platform, test cases."""

from tests.plantedTree import PlantedTreeTest

PLATFORM = "the platform is tested in wideChar.h and callConv.h alone; other code picks a body by its file"


class Lengths(PlantedTreeTest):
    def test_501_lines_are_too_many(self) -> None:
        self.refuses("src/frame/planted.h", "//\n" * 501, "501: more than 500 lines")

    def test_500_lines_are_not(self) -> None:
        self.accepts("src/frame/planted.h", "//\n" * 500)

    def test_121_columns_are_too_many(self) -> None:
        self.refuses("src/frame/planted.h", f"\n// {'x' * 118}\n", "2: more than 120 columns")

    def test_120_columns_of_more_bytes_are_not(self) -> None:
        self.accepts("src/frame/planted.h", f"// {'ä' * 117}\n")

    def test_hold_for_python(self) -> None:
        self.refuses("tools/planted.py", f"# {'x' * 119}\n", "1: more than 120 columns")

    def test_hold_for_a_script_without_a_suffix(self) -> None:
        self.refuses("tools/planted", f"#!/usr/bin/env python3\n# {'x' * 119}\n", "2: more than 120 columns")

    def test_do_not_hold_for_data(self) -> None:
        self.accepts("tools/planted.txt", "x" * 200)


class Habits(PlantedTreeTest):
    def test_no_work_is_left(self) -> None:
        for mark in ("TO" "DO: later", "FIX" "ME"):
            self.refuses("host/low/planted.h", f"// {mark}\n", "1: work is done or it is not in the tree")
        self.accepts("host/low/planted.h", "// Nothing is to do.\n")

    def test_comments_have_no_banners(self) -> None:
        for banner in ("// ------------", "/* ======== */", "//////////", " * ******"):
            self.refuses("host/low/planted.h", f"{banner}\n", "1: comments have no banners")
        self.accepts("host/low/planted.h", "// -- and so on --\n// --- three ---\n")
        self.refuses("tools/planted.py", "# ----\n", "1: comments have no banners")

    def test_the_library_has_no_try(self) -> None:
        message = "the library has no try: a local guard closes and releases"
        self.refuses("src/frame/planted.h", "    try {\n    } catch (...) {\n", f"1: {message}", f"2: {message}")
        self.accepts("src/frame/planted.h", 'if (m_lock.try_lock()) { // try { again\n    Log("try");\n')

    def test_other_parts_may_have_one(self) -> None:
        self.accepts("siblings/planted.h", "    try {\n")

    def test_public_headers_use_nothing_of_the_standard_library(self) -> None:
        self.refuses("src/frame/interfaces.h", "std::string Name();\n",
                     "1: a public header uses nothing of the standard library")
        self.accepts("src/frame/interfaces.h", "// no std::string\n")


class PlatformConditions(PlantedTreeTest):
    def test_are_refused_in_other_code(self) -> None:
        for path, line in (("src/mordRev/src/planted.cpp", "#ifdef _WIN32"), ("host/low/planted.h", "#ifndef __unix__"),
                           ("src/platform/planted.h", "#if defined(__linux__)"),
                           ("tests/kit/planted.h", "# if __GNUC__ > 11"),
                           ("siblings/planted.h", "#elif defined(__i386__)")):
            self.refuses(path, line + "\n", f"1: {PLATFORM}")
            (self.root / path).unlink()

    def test_are_read_with_the_lines_that_continue_them(self) -> None:
        self.refuses("src/frame/planted.h", "\n#if 1 && \\\n    defined(_MSC_VER)\n", f"2: {PLATFORM}")

    def test_are_accepted_in_the_headers_that_the_table_names(self) -> None:
        self.accepts("src/platform/wideChar.h", "#ifdef _WIN32\n")

    def test_are_no_other_conditions(self) -> None:
        self.accepts("src/frame/planted.h", "#ifdef __cplusplus\n#if defined(MORDREV_CALLER_BITS)\n// linux\n")


class TestCases(PlantedTreeTest):
    CASE = "TEST(Suite, Case) {\n"

    def test_are_run_and_can_fail(self) -> None:
        for line in ("    GTEST_" "SKIP();", "    SUC" "CEED();", "TEST(A, DIS" "ABLED_B) {",
                     "    EXPECT_" "TRUE(true);"):
            self.refuses("tests/kit/plantedTest.cpp", self.CASE + line + "\n", "2: a test is run and can fail")

    def test_in_python_are_run_and_can_fail(self) -> None:
        for line in ("    @unittest.sk" "ip('later')", "    self.skip" "Test('')", "    self.assertTrue" "(True)"):
            self.refuses("tools/tests/testPlanted.py", line + "\n", "1: a test is run and can fail")
        self.accepts("tools/tests/testPlanted.py", "    self.assertTrue(value)\n")

    def test_may_compare_with_true(self) -> None:
        self.accepts("tests/kit/plantedTest.cpp", self.CASE + "    EXPECT_TRUE(trueValue);\n")

    def test_are_in_files_named_for_them(self) -> None:
        message = "1: test cases are in a file of tests that is named xTest.cpp"
        self.refuses("tests/kit/planted.cpp", self.CASE, message)
        (self.root / "tests/kit/planted.cpp").unlink()
        self.refuses("host/low/plantedTest.cpp", self.CASE, message)

    def test_may_be_in_files_named_for_a_system_too(self) -> None:
        self.accepts("tests/kit/plantedTestWin32.cpp", "TEST_F(Suite, Case) {\n")

    def test_are_in_each_file_that_is_named_for_them(self) -> None:
        self.refuses("tests/kit/plantedTest.cpp", "int x;\n", "1: a file that is named xTest.cpp has test cases")

    def test_may_be_assertions_of_the_compiler(self) -> None:
        self.accepts("tests/kit/plantedTest.cpp", "static_assert(sizeof(int) == 4);\n")
