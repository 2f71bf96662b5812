# Compiles through ccache when it is installed. The sloppiness settings are those that its manual asks for with
# precompiled headers.
find_program(MORDREV_CCACHE ccache)
if(MORDREV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(launcher ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${MORDREV_CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:SHELL:-Xclang -fno-pch-timestamp>")
    endif()
endif()
