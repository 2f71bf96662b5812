# The header-only dependencies, as system headers.
#
# The cross compiler must not see the native /usr/include. It gets a folder of links to the header folders instead.
find_path(MORDREV_RAPIDJSON_DIR rapidjson/document.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(MORDREV_CLI11_DIR CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)

set(headerLibraries ${CMAKE_BINARY_DIR}/headerLibraries)
function(mordrev_header_library target source folder)
    file(MAKE_DIRECTORY ${headerLibraries}/${target})
    file(CREATE_LINK ${source}/${folder} ${headerLibraries}/${target}/${folder} SYMBOLIC)
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${headerLibraries}/${target})
endfunction()

mordrev_header_library(rapidJson ${MORDREV_RAPIDJSON_DIR} rapidjson)
mordrev_header_library(cli11 ${MORDREV_CLI11_DIR} CLI)
