# The programs of the tests are linked by LLVM's linker, which takes a tenth of a second where the cross compiler's own
# takes nearly two; there are many of them. The compiler goes to its own linker whatever -fuse-ld says, so that clang
# stands in as driver, with the compiler's start files and libraries: what registers the unwinding tables is there.
# What ships is linked by the compiler itself. Sets rules of the folder that includes this and of those below; one that
# needs the compiler's own linker sets CMAKE_CXX_LINK_EXECUTABLE to compilersLinkRule.
set(compilersLinkRule ${CMAKE_CXX_LINK_EXECUTABLE})
foreach(file crt2.o crtbegin.o crtend.o libgcc.a)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${file} OUTPUT_VARIABLE found
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    string(MAKE_C_IDENTIFIER ${file} name)
    set(compilers_${name} ${found})
endforeach()
cmake_path(GET compilers_libgcc_a PARENT_PATH compilersLibraries)
find_program(MORDREV_TEST_LINKER clang++ REQUIRED)
set(CMAKE_CXX_LINK_EXECUTABLE
    "${MORDREV_TEST_LINKER} --target=${windowsTarget} -fuse-ld=lld -nostartfiles <LINK_FLAGS> <CMAKE_CXX_LINK_FLAGS> \
-static -L${compilersLibraries} ${compilers_crt2_o} ${compilers_crtbegin_o} <OBJECTS> -o <TARGET> <LINK_LIBRARIES> \
-lpthread ${compilers_crtend_o}")
