"""Names of files and folders."""

from tests.plantedTree import PlantedTreeTest


class Names(PlantedTreeTest):
    SOURCE = "1: a source is named in lowerCamel and ends in .h, .cpp, .c or .S"

    def test_of_sources_are_in_lower_camel(self) -> None:
        for path in ("src/frame/Planted.h", "src/frame/planted_file.h", "host/low/planted-file.h", "host/low/slots.hpp",
                     "siblings/planted.writer.h"):
            self.refuses(path, "", self.SOURCE)
            (self.root / path).unlink()
        self.accepts("host/low/plantedFile2.h", "")

    def test_of_python_files_are_in_lower_camel(self) -> None:
        message = "1: a Python file is named in lowerCamel and ends in .py, or in nothing if it is run"
        self.refuses("tools/planted_file.py", "", message)
        (self.root / "tools/planted_file.py").unlink()
        self.accepts("tools/plantedFile.py", "")
        self.accepts("tools/part/__init__.py", "")
        self.accepts("tools/plantedFile", "#!/usr/bin/env python3\n")

    def test_of_folders_are_in_lower_camel(self) -> None:
        self.refuses("host/low/With_Line/planted.h", "", "1: a folder is named in lowerCamel, not With_Line")
        (self.root / "host/low/With_Line/planted.h").unlink()
        self.accepts("host/low/withLine/planted.h", "")

    def test_say_what_is_in_the_file(self) -> None:
        for path, part in (("src/frame/util/planted.h", "util"), ("src/frame/stringUtils.h", "stringUtils"),
                           ("host/low/helper.h", "helper")):
            self.refuses(path, "", f"1: a name says what is in the file; {part} does not")
            (self.root / path).unlink()
        self.accepts("src/frame/futile.h", "")
