# Checks a built shared library of the siblings:
#
#   cmake -DREADELF=… -DFILE=… -DNAME=libZelkBase.so -P checkLibraryLinux.cmake
#
# It calls itself NAME and defines the one dynamic symbol CreateZelkObject.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${READELF} --wide --dynamic --dyn-syms ${FILE}
    OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)

if(NOT dump MATCHES "\\(SONAME\\)[^\n]*\\[${NAME}\\]\n")
    message(SEND_ERROR "${FILE} is not called ${NAME}")
endif()

set(exports)
string(REGEX MATCHALL "[^\n]* (GLOBAL|WEAK|UNIQUE) [^\n]*" symbols "${dump}")
foreach(symbol IN LISTS symbols)
    if(NOT symbol MATCHES " UND ")
        string(REGEX REPLACE ".* " "" symbol "${symbol}")
        list(APPEND exports ${symbol})
    endif()
endforeach()
if(NOT exports STREQUAL "CreateZelkObject")
    message(SEND_ERROR "${FILE} exports: ${exports}")
endif()
