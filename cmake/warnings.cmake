# Warnings are errors, for every target of this tree that links mordRevWarnings.
add_library(mordRevWarnings INTERFACE)
target_compile_options(mordRevWarnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # The paths of the build machine stand in no binary; __FILE__ starts at the root of the tree.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
