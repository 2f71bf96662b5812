"""Layers, public headers, RapidJSON and headers of the system."""

from dataclasses import replace

from tests.plantedTree import TABLE, PlantedTreeTest


class Layers(PlantedTreeTest):
    def test_accepts_the_tree_without_a_breach(self) -> None:
        self.assertEqual([], self.reports())

    def test_refuses_an_include_upward(self) -> None:
        self.refuses("src/platform/planted.h", '\n#include "frame/factory.h"\n',
                     "2: src/platform may not include src/frame/factory.h")

    def test_accepts_an_include_downward(self) -> None:
        self.accepts("src/mordRev/src/planted.h", '#include "platform/platform.h"\n')

    def test_accepts_an_include_of_the_same_row(self) -> None:
        self.accepts("src/frame/planted.h", '#include "frame/factory.h"\n')

    def test_reads_an_include_with_blanks(self) -> None:
        self.refuses("src/platform/planted.h", '  #  include   "frame/factory.h" // why\n',
                     "1: src/platform may not include src/frame/factory.h")

    def test_finds_a_header_of_the_tree_in_angle_brackets_too(self) -> None:
        self.refuses("src/platform/planted.h", "#include <frame/factory.h>\n",
                     "1: src/platform may not include src/frame/factory.h")

    def test_takes_a_row_without_the_rows_below_it(self) -> None:
        self.refuses("siblings/planted.h", '#include "one/service.h"\n',
                     "1: siblings may not include siblings/one/service.h")

    def test_refuses_the_higher_of_two_folders_of_the_host(self) -> None:
        self.write("host/high/decision.h", "")
        self.refuses("host/low/planted.h", '#include "high/decision.h"\n',
                     "1: host/low may not include host/high/decision.h")

    def test_accepts_a_single_header_that_a_row_names(self) -> None:
        self.accepts("tests/model/planted.h", '#include "frame/interfaces.h"\n')

    def test_refuses_the_header_beside_a_single_one(self) -> None:
        self.refuses("tests/model/planted.h", '#include "frame/factory.h"\n',
                     "1: tests/model may not include src/frame/factory.h")

    def test_refuses_a_folder_without_a_row(self) -> None:
        self.refuses("src/other/planted.h", "", "1: the layer table has no row for src/other")

    def test_refuses_tests_in_benches_and_benches_in_tests(self) -> None:
        self.refuses("bench/planted.h", '#include "model/model.h"\n', "1: bench may not include tests/model/model.h")
        (self.root / "bench/planted.h").unlink()
        self.refuses("tests/kit/planted.h", '#include "bench/limits.h"\n',
                     "1: tests/kit may not include bench/limits.h")


class Exceptions(PlantedTreeTest):
    TABLE = replace(TABLE, exceptions={("bench/planted.h", "tests/model/model.h"): "why"})

    def test_accept_what_they_name(self) -> None:
        self.accepts("bench/planted.h", '#include "model/model.h"\n', table=self.TABLE)

    def test_are_for_one_file(self) -> None:
        self.write("bench/planted.h", '#include "model/model.h"\n')
        self.refuses("bench/plantedToo.h", '#include "model/model.h"\n',
                     "1: bench may not include tests/model/model.h", table=self.TABLE)

    def test_are_reported_when_nothing_needs_them(self) -> None:
        self.assertEqual(["tools/structureRules/layerTable.py:1: the exception is not needed any more: "
                          "bench/planted.h includes tests/model/model.h"], self.reports(self.TABLE))


class OwnSources(PlantedTreeTest):
    def test_of_src_are_included_by_their_path_from_src(self) -> None:
        self.write("host/low/dotStore.h", "")
        for name in ("low/dotStore.h", "host/low/dotStore.h", "../siblings/shared.h", "receiver.cpp",
                     "tests/kit/fake.h"):
            self.refuses("src/mordRev/src/planted.h", f'#include "{name}"\n',
                         "1: src includes its own sources by their path from src, and nothing else of the tree, "
                         f"not {name}")

    def test_are_there(self) -> None:
        self.refuses("host/low/planted.h", '#include "gone.h"\n',
                     "1: the tree has no file gone.h where this folder looks for it")

    def test_of_other_folders_may_be_included_from_their_own_folder(self) -> None:
        self.accepts("host/low/planted.h", '#include "text.h"\n')


class PublicHeaders(PlantedTreeTest):
    def test_take_nothing_of_the_standard_library(self) -> None:
        self.refuses("src/frame/interfaces.h", "#include <string>\n",
                     "1: a public header includes <stdint.h> and public headers alone, not string")

    def test_take_no_other_header_of_the_library(self) -> None:
        self.refuses("src/frame/interfaces.h", '#include "frame/factory.h"\n',
                     "1: a public header includes <stdint.h> and public headers alone, not frame/factory.h")

    def test_take_integers_and_each_other(self) -> None:
        self.accepts("src/frame/interfaces.h", '#include <stdint.h>\n#include "platform/wideChar.h"\n')

    def test_are_all_that_a_host_sees(self) -> None:
        self.refuses("host/low/planted.h", '#include "frame/factory.h"\n',
                     "1: host/low may not include src/frame/factory.h")
        self.accepts("host/low/planted.h", '#include "frame/interfaces.h"\n')


class RapidJson(PlantedTreeTest):
    MESSAGE = "1: RapidJSON is included by src/mordRev/src/json.h and by .cpp files outside of src alone"

    def test_comes_into_src_by_one_header(self) -> None:
        self.refuses("src/mordRev/src/planted.cpp", "#include <rapidjson/writer.h>\n", self.MESSAGE)

    def test_comes_into_no_other_header(self) -> None:
        self.refuses("host/low/planted.h", "#include <rapidjson/writer.h>\n", self.MESSAGE)

    def test_comes_into_sources_of_the_host(self) -> None:
        self.accepts("host/low/planted.cpp", "#include <rapidjson/writer.h>\n")

    def test_header_comes_into_no_header(self) -> None:
        self.refuses("src/mordRev/src/planted.h", '#include "mordRev/src/json.h"\n',
                     "1: src/mordRev/src/json.h is included by .cpp files alone")

    def test_header_comes_into_sources(self) -> None:
        self.accepts("src/mordRev/src/planted.cpp", '#include "mordRev/src/json.h"\n')


class SystemHeaders(PlantedTreeTest):
    def test_stay_out_of_the_receiver(self) -> None:
        for name in ("windows.h", "unistd.h", "sys/types.h", "winternl.h"):
            self.refuses("src/mordRev/src/planted.cpp", f"#include <{name}>\n",
                         f"1: headers of the system are included by the platform's bodies alone, not <{name}>")

    def test_stay_out_of_headers_of_the_platform(self) -> None:
        self.refuses("src/platform/planted.h", "#include <windows.h>\n",
                     "1: headers of the system are included by the platform's bodies alone, not <windows.h>")

    def test_stay_out_of_bodies_of_other_parts(self) -> None:
        self.refuses("src/frame/plantedWin32.cpp", "#include <windows.h>\n",
                     "1: headers of the system are included by the platform's bodies alone, not <windows.h>")

    def test_come_into_bodies_of_the_platform(self) -> None:
        self.accepts("src/platform/plantedWin32.cpp", "#include <windows.h>\n")
        self.accepts("src/platform/plantedPosix.cpp", "#include <sys/random.h>\n")

    def test_come_into_files_of_the_host_that_are_named_for_the_system(self) -> None:
        self.accepts("host/low/plantedWin32.cpp", "#include <windows.h>\n")
        self.accepts("host/low/plantedPosix.h", "#include <unistd.h>\n")
        self.refuses("host/low/planted.cpp", "#include <windows.h>\n",
                     "1: only a file that is named for a system (xWin32, xPosix, xLinux) includes <windows.h>")

    def test_of_the_language_and_of_libraries_are_none(self) -> None:
        self.accepts("host/low/planted.cpp", "#include <stdint.h>\n#include <string_view>\n#include <CLI/CLI.hpp>\n")
        self.accepts("host/low/planted.c", "#include <stdio.h>\n")

    def test_of_the_c_language_are_for_c(self) -> None:
        self.refuses("host/low/planted.cpp", "#include <stdio.h>\n",
                     "1: only a file that is named for a system (xWin32, xPosix, xLinux) includes <stdio.h>")

    def test_come_into_tests(self) -> None:
        self.accepts("tests/kit/planted.cpp", "#include <unistd.h>\n")
