# Checks a built DLL of the siblings:
#
#   cmake -DOBJDUMP=… -DFILE=… -DNAME=ZelkBase.dll -DBITS=32 -P checkLibraryWin32.cmake
#
# It is a PE library of that width that exports CreateZelkObject, undecorated, under the ordinal 1 and nothing else, calls
# itself NAME, carries a version resource, and imports from libraries of the system alone.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${OBJDUMP} -p -h ${FILE} OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)

if(BITS EQUAL 32)
    set(format pei-i386)
    set(magic PE32)
else()
    set(format pei-x86-64)
    set(magic "PE32\\+")
endif()

# The dump must contain each pattern. A second export would follow the first and break the match.
foreach(wanted IN ITEMS
        "file format ${format}\n"
        "\n\tDLL\n"
        "\\(${magic}\\)\n"
        "\nName [^\n]* ${NAME}\n"
        "\nOrdinal Base[ \t]+1\n"
        "\n\tExport Address Table[ \t]+00000001\n"
        "\n\t\\[Name Pointer/Ordinal\\] Table[ \t]+00000001\n"
        "\n\t\\[ +0\\] \\+base\\[ +1\\] [0-9a-f]+ Export RVA\n\n"
        "\n\\[Ordinal/Name Pointer\\] Table[^\n]*\n\t\\[ +0\\] (\\+base\\[ +1\\] +[0-9a-f]+ )?CreateZelkObject\n\n"
        " \\.rsrc ")
    if(NOT dump MATCHES "${wanted}")
        message(SEND_ERROR "${FILE} has no: ${wanted}")
    endif()
endforeach()

set(systemLibraries advapi32.dll kernel32.dll msvcrt.dll)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${dump}")
if(NOT imports)
    message(SEND_ERROR "${FILE} has no imports: the dump was not understood")
endif()
foreach(import IN LISTS imports)
    string(REPLACE "DLL Name: " "" library "${import}")
    string(TOLOWER "${library}" library)
    if(NOT library IN_LIST systemLibraries)
        message(SEND_ERROR "${FILE} imports from ${library}")
    endif()
endforeach()
