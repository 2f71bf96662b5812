# The launchers of ctest: tools/testRun, which checks the result line of a test program and starts Windows programs
# under Wine.
#
# testLauncher is for GoogleTest programs; mordrev_test sets it for each. CMAKE_CROSSCOMPILING_EMULATOR starts the other
# programs of a Windows build, and no others.
find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)
# The interpreter itself: the program found can be a script that searches for one, which takes longer than a test case.
# For the same reason -S skips Python's site module, which no test needs.
execute_process(COMMAND ${Python3_EXECUTABLE} -c "import sys; print(sys.executable)" OUTPUT_VARIABLE MORDREV_PYTHON
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(testLauncher ${MORDREV_PYTHON} -E -s -S ${PROJECT_SOURCE_DIR}/tools/testRun)
if(WIN32)
    list(APPEND testLauncher --wine)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${testLauncher} --plain)
endif()
