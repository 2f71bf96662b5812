# Windows, cross-built with mingw-w64; the programs run under Wine (testLauncher.cmake). The toolchain file of each
# bitness includes this file. It sets CMAKE_SYSTEM_PROCESSOR and windowsTarget, the target triplet of the compiler.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${windowsTarget}-g++-posix)
set(CMAKE_C_COMPILER ${windowsTarget}-gcc-posix)
set(CMAKE_RC_COMPILER ${windowsTarget}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${windowsTarget})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Static runtime: the results need only system DLLs.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
