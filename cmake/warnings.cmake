# Warnings are errors, for every target of this tree that links mordRevWarnings.
option(MORDREV_WARNINGS_ARE_ERRORS "Stop at a warning" ON)

# An owner deletes the variants of Native through their base, which is as large as they are and holds nothing. clang
# counts changes of sign among the conversions; GCC, which the product is built with, does not. And clang 14 finds a
# comparison of RapidJSON's iterators ambiguous that it then makes as it is meant.
set(clangsWarnings
    -Wno-delete-non-abstract-non-virtual-dtor -Wno-sign-conversion -Wno-ambiguous-reversed-operator)
add_library(mordRevWarnings INTERFACE)
target_compile_options(mordRevWarnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${MORDREV_WARNINGS_ARE_ERRORS}>:-Werror>
    # The paths of the build machine stand in no binary; __FILE__ starts at the root of the tree.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
    "$<$<CXX_COMPILER_ID:Clang>:${clangsWarnings}>")
