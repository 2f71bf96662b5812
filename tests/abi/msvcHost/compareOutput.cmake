# Runs PROGRAM and compares its exit code with 0 and its standard output with the text of the file EXPECTED.
execute_process(COMMAND ${PROGRAM} RESULT_VARIABLE code OUTPUT_VARIABLE output)
file(READ ${EXPECTED} expected)
if(NOT code STREQUAL "0" OR NOT output STREQUAL expected)
    message(FATAL_ERROR "exit code ${code}, output:\n${output}\nexpected exit code 0 and:\n${expected}")
endif()
