# MORDREV_COVERAGE has clang count the branches, and the conditions within them, that a run takes. Read by tools/coverage.
option(MORDREV_COVERAGE "Count what a run takes of the code" OFF)
if(MORDREV_COVERAGE)
    # Clang 19 reads the bodies of templates that nobody calls, and finds a fault in one of RapidJSON 1.1.
    configure_file(cmake/coverage.list.in coverage.list @ONLY)
    add_compile_options(-fprofile-list=${CMAKE_CURRENT_BINARY_DIR}/coverage.list
        -fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc
        -fdelayed-template-parsing -Wno-delayed-template-parsing-in-cxx20)
    add_link_options(-fprofile-instr-generate)
endif()
