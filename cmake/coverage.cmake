# MORDREV_COVERAGE makes clang count the branches and conditions that a run executes. tools/coverage reads the counts.
option(MORDREV_COVERAGE "Count the branches and conditions that a run executes" OFF)
if(MORDREV_COVERAGE)
    # Clang 19 checks uninstantiated templates and finds an error in one of RapidJSON 1.1.
    configure_file(cmake/coverage.list.in coverage.list @ONLY)
    add_compile_options(-fprofile-list=${CMAKE_CURRENT_BINARY_DIR}/coverage.list
        -fprofile-instr-generate -fcoverage-mapping -fcoverage-mcdc
        -fdelayed-template-parsing -Wno-delayed-template-parsing-in-cxx20)
    add_link_options(-fprofile-instr-generate)
endif()
