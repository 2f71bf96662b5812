# Warnings are errors for every target that links mordRevWarnings.
option(MORDREV_WARNINGS_ARE_ERRORS "Treat warnings as errors" ON)

# Owners delete the variants of Native through that base class, which has their size and no resource. clang counts
# changes of sign as conversions; GCC, which builds the product, does not. clang 14 reports a comparison of RapidJSON's
# iterators as ambiguous and then compiles it correctly.
set(clangsWarnings
    -Wno-delete-non-abstract-non-virtual-dtor -Wno-sign-conversion -Wno-ambiguous-reversed-operator)
add_library(mordRevWarnings INTERFACE)
target_compile_options(mordRevWarnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${MORDREV_WARNINGS_ARE_ERRORS}>:-Werror>
    # No binary contains paths of the build machine; __FILE__ starts at the root of the tree.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
    "$<$<CXX_COMPILER_ID:Clang>:${clangsWarnings}>")
