# The fuzzers: one program for each target, with clang's fuzzing engine.

# Only library code guides the fuzzer: nothing else is compiled with coverage instrumentation.
foreach(library mordRevCore native32 native64)
    target_compile_options(${library} PRIVATE
        -fsanitize=fuzzer-no-link -fsanitize-coverage-ignorelist=${PROJECT_SOURCE_DIR}/cmake/fuzzIgnoreList.txt)
endforeach()

# The model and the host's side run without sanitizers: the time is for the library. What they pass to the library lies
# on the heap, which AddressSanitizer guards in every case.
foreach(library modelKit fuzzedReceiver)
    target_compile_options(${library} PRIVATE -fno-sanitize=all -Wno-unused-command-line-argument)
endforeach()

# Windows aligns 64-bit fields to their size in 32-bit processes too, and so are the structures of a target laid out.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    foreach(library native32 native64)
        target_compile_options(${library} PUBLIC -malign-double)
    endforeach()
endif()

add_custom_target(fuzzers)

# mordrev_fuzzer(NAME FUNCTION LIBRARY LIBRARIES...): runs FUNCTION (targets.h) over the code of LIBRARY.
#
# The linker keeps the first copy of an inline function or template that several objects define. The library's objects
# come first, so that the instrumented copies remain. The files that quietSystem replaces are left out; a program without
# quietSystem takes them from the archive.
function(mordrev_fuzzer name function library)
    add_executable(${name}
        $<FILTER:$<TARGET_OBJECTS:${library}>,EXCLUDE,/platformPosix|/procPathLinux> engine.cpp)
    target_compile_definitions(${name} PRIVATE MORDREV_FUZZ_TARGET=${function})
    target_link_libraries(${name} PRIVATE fuzzInputRun ${ARGN} mordRevTestOptions)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
    add_dependencies(fuzzers ${name})
endfunction()

mordrev_fuzzer(allowList FuzzAllowList mordRevCore quietSystem fuzzHugeSizes fuzzedReceiver)
mordrev_fuzzer(actionTable FuzzActionTable mordRevCore quietSystem fuzzHugeSizes fuzzedReceiver)
mordrev_fuzzer(queryResult FuzzQueryResult mordRevCore quietSystem fuzzHugeSizes fuzzedReceiver)
mordrev_fuzzer(hostRecords FuzzHostRecords mordRevCore quietSystem fuzzHugeSizes fuzzedReceiver)
mordrev_fuzzer(hostAnswers FuzzHostAnswers mordRevCore quietSystem fuzzHugeSizes fuzzedReceiver)
mordrev_fuzzer(iniFile FuzzIniFile mordRevCore fuzzedIniFile)
mordrev_fuzzer(targetMemory32 FuzzTargetMemory native32 scripted32 fuzzedTargetMemory32)
mordrev_fuzzer(targetMemory64 FuzzTargetMemory native64 scripted64 fuzzedTargetMemory64)
