"""The sources that the build names."""

from tests.plantedTree import PlantedTreeTest


class Built(PlantedTreeTest):
    MESSAGE = "1: no CMakeLists.txt names this file"

    def test_a_source_that_nothing_compiles_is_reported(self) -> None:
        self.refuses("src/frame/forgotten.cpp", "", self.MESSAGE)

    def test_a_name_in_a_comment_is_none(self) -> None:
        self.refuses("src/frame/notThis.cpp", "", self.MESSAGE)

    def test_a_name_that_is_the_end_of_another_is_none(self) -> None:
        self.refuses("src/frame/lanted.c", "", self.MESSAGE)

    def test_a_name_with_a_variable_stands_for_its_bodies(self) -> None:
        self.accepts("src/platform/plantedWin32.cpp", "")
        self.accepts("src/platform/plantedPosix.cpp", "")

    def test_a_header_need_not_be_named(self) -> None:
        self.accepts("src/frame/planted.h", "")

    def test_a_cmake_file_beside_the_source_counts(self) -> None:
        self.write("host/low/sources.cmake", "list(APPEND sources low/forgotten.cpp)\n")
        self.accepts("host/low/forgotten.cpp", "")
