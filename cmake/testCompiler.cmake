# The programs of the tests are compiled by clang and linked by LLVM's linker, whatever compiler the build has: there are
# many of them, clang takes half of GCC's time for a test, and its linker a tenth of a second where that of the cross
# compiler takes nearly two. The library under test is compiled as it ships, and so it is met by the code of another
# compiler, as in hosts. Where one of them is missing, which a build for Linux can do without, the build's own compiler
# does it.
#
# Sets rules of the folder that includes this and of those below. testCompiler is the id of what compiles.
set(testCompiler ${CMAKE_CXX_COMPILER_ID})
if(testCompiler STREQUAL "Clang")
    return()
endif()
find_program(MORDREV_TEST_COMPILER clang++)
find_program(MORDREV_TEST_LINKER ld.lld)
if(NOT MORDREV_TEST_COMPILER OR NOT MORDREV_TEST_LINKER)
    if(WIN32)
        message(FATAL_ERROR "The tests for Windows need clang++ and lld.")
    endif()
    return()
endif()
set(testCompiler Clang)

# What CMake would tell clang if it were the compiler of the build; warnings.cmake tells why clang is not to warn.
set(CMAKE_CXX_COMPILE_OPTIONS_VISIBILITY_INLINES_HIDDEN -fvisibility-inlines-hidden)
list(JOIN clangsWarnings " " clangsOptions)
string(APPEND clangsOptions " -Wno-unused-command-line-argument")
set(CMAKE_CXX_COMPILE_OPTIONS_INVALID_PCH "")
set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH
    -Xclang -include-pch -Xclang <PCH_FILE> -Xclang -include -Xclang <PCH_HEADER>)
set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -Xclang -emit-pch -Xclang -include -Xclang <PCH_HEADER> -x c++-header)
set(CMAKE_PCH_PROLOGUE "#pragma clang system_header")

set(driver ${MORDREV_TEST_COMPILER})
if(WIN32)
    # clang does not know which of the compiler's C++ libraries is meant, and takes the headers of Linux for those behind
    # it: all are named. Two macros that the compiler defines for this system tell where type names are compared. And
    # GCC's variables of threads are emulated ones, of which its library has some in its headers.
    foreach(file crt2.o crtbegin.o crtend.o libgcc.a)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${file} OUTPUT_VARIABLE found
            OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        string(MAKE_C_IDENTIFIER ${file} name)
        set(compilers_${name} ${found})
    endforeach()
    cmake_path(GET compilers_libgcc_a PARENT_PATH compilersLibraries)
    set(driver "${driver} --target=${windowsTarget}")
    string(APPEND clangsOptions " -femulated-tls -nostdinc++ -nostdlibinc")
    string(APPEND clangsOptions " -D__GXX_TYPEINFO_EQUALITY_INLINE=0 -D__GXX_MERGED_TYPEINFO_NAMES=0")
    foreach(folder c++ c++/${windowsTarget} c++/backward)
        string(APPEND clangsOptions " -isystem ${compilersLibraries}/include/${folder}")
    endforeach()
    string(APPEND clangsOptions " -idirafter ${CMAKE_FIND_ROOT_PATH}/include")
    # The compiler goes to its own linker whatever -fuse-ld says, so that clang stands in as driver, with the compiler's
    # start files and libraries: what registers the unwinding tables is there.
    set(CMAKE_CXX_LINK_EXECUTABLE
        "${driver} -fuse-ld=lld -nostartfiles <LINK_FLAGS> <CMAKE_CXX_LINK_FLAGS> \
-static -L${compilersLibraries} ${compilers_crt2_o} ${compilers_crtbegin_o} <OBJECTS> -o <TARGET> <LINK_LIBRARIES> \
-lpthread ${compilers_crtend_o}")
else()
    set(CMAKE_CXX_LINK_EXECUTABLE
        "${driver} -fuse-ld=lld <FLAGS> <CMAKE_CXX_LINK_FLAGS> <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES>")
endif()
set(CMAKE_CXX_COMPILE_OBJECT
    "${driver} <DEFINES> <INCLUDES> <FLAGS> ${clangsOptions} -o <OBJECT> -c <SOURCE>")
