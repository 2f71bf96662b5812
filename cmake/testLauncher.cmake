# What ctest starts programs with: tools/testRun, which holds a test program to its own result line, and Windows programs
# by Wine.
#
# testLauncher is for programs of GoogleTest; mordrev_test sets it for each. Other programs of a Windows build, and those
# alone, are started by CMAKE_CROSSCOMPILING_EMULATOR.
find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)
# The interpreter itself: what is found may be a script that looks for one, which takes longer than a test case. For the
# same reason no test needs what Python loads for others (-S).
execute_process(COMMAND ${Python3_EXECUTABLE} -c "import sys; print(sys.executable)" OUTPUT_VARIABLE MORDREV_PYTHON
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(testLauncher ${MORDREV_PYTHON} -E -s -S ${PROJECT_SOURCE_DIR}/tools/testRun)
if(WIN32)
    list(APPEND testLauncher --wine)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${testLauncher} --plain)
endif()
