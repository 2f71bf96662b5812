# MORDREV_SANITIZE names the sanitizers of a build, such as "address,undefined" or "thread". Native builds only.
set(MORDREV_SANITIZE "" CACHE STRING "Sanitizers of this build, separated by commas")
if(MORDREV_SANITIZE)
    # No check of dynamic types: hosts and siblings may hand in tables that no C++ compiler made, and that is no fault.
    add_compile_options(-fsanitize=${MORDREV_SANITIZE} -fno-sanitize=vptr -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${MORDREV_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        add_compile_options(-fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/clangIgnoreList.txt)
    endif()
endif()
