"""Rules about the names of files and folders."""

import re
from collections.abc import Iterator

from structureRules.breach import Breach
from structureRules.sourceFile import SourceFile

CODE_NAME = re.compile(r"[a-z][A-Za-z0-9]*\.(h|c|cpp|S)$")
PYTHON_NAME = re.compile(r"([a-z][A-Za-z0-9]*(\.py)?|__init__\.py)$")
FOLDER_NAME = re.compile(r"[a-z][A-Za-z0-9]*$")
WORD = re.compile(r"[A-Z]?[a-z0-9]+|[A-Z]+")
EMPTY_WORDS = {"util", "utils", "utility", "utilities", "helper", "helpers", "misc"}


def names(source: SourceFile) -> Iterator[Breach]:
    """Files and folders have lowerCamel names that describe their content."""
    if source.is_code and not CODE_NAME.match(source.name):
        yield Breach(source.path, 1, "a source is named in lowerCamel and ends in .h, .cpp, .c or .S")
    elif not source.is_code and not PYTHON_NAME.match(source.name):
        yield Breach(source.path, 1, "a Python file is named in lowerCamel and ends in .py, or in nothing if it is run")
    folders = source.folder.split("/")
    for folder in folders:
        if not FOLDER_NAME.match(folder):
            yield Breach(source.path, 1, f"a folder is named in lowerCamel, not {folder}")
    for part in [*folders, source.stem]:
        if any(word.lower() in EMPTY_WORDS for word in WORD.findall(part)):
            yield Breach(source.path, 1, f"a name says what is in the file; {part} does not")
