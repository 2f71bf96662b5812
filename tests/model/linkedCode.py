"""linkedCode.py NM ARCHIVE PROGRAM ...: fails if a program has a function or an object that the archive defines.

Templates and inline functions do not count: any program may have them. ELF files mark them as weak. Windows files do
not: the check skips names of the standard library, of RapidJSON and of the type information of interfaces.
"""

import re
import subprocess
import sys

SHARED = re.compile(r"_+Z(T[ISV]|Z)?N?K?(St|9__gnu_cxx|9rapidjson)|_+ZT[ISV]\d+I[A-Z]")


def symbols(nm: str, file: str, kinds: str) -> set[str]:
    """The names of the symbols of these kinds that the file defines."""
    listing = subprocess.run([nm, "--defined-only", "--format=posix", file], capture_output=True, text=True, check=True)
    fields = [line.split() for line in listing.stdout.splitlines()]
    return {each[0] for each in fields if len(each) >= 2 and each[1] in kinds}


def main(nm: str, archive: str, *programs: str) -> int:
    of_library = {name for name in symbols(nm, archive, "TDBRG") if not SHARED.match(name)}
    if not any("CMordRecv" in name for name in of_library) or not programs:
        print(f"{archive} defines no receiver, or there is no program to check")
        return 1
    faults = 0
    for program in programs:
        own = symbols(nm, program, "TtDdBbRrGgVvWw")
        if not any("ReceiverModel" in name for name in own):
            print(f"{program} has no symbols to check")
            faults += 1
        for name in sorted(own & of_library):
            print(f"{program} links {name} of the library")
            faults += 1
    print(f"{len(of_library)} symbols of the library, {len(programs)} programs, {faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
