// The fuzzed targets. Each takes one input, returns if everything held, and ends the process if something did not. One
// input has no effect on the result of the next.
#pragma once

#include <cstddef>
#include <cstdint>

using FuzzTarget = void(const uint8_t* data, size_t size);

// Documents. An input is a text with repetitions (expansion.h). For the two tables it is up to eight texts, separated
// by NULs, which are given to the receiver in turn.
FuzzTarget FuzzAllowList;
FuzzTarget FuzzActionTable;
FuzzTarget FuzzQueryResult;

// One event whose records give any answer to each read.
FuzzTarget FuzzHostRecords;

// One event whose host gives any answer to each call, and calls the receiver from within these calls.
FuzzTarget FuzzHostAnswers;

// An ini file.
FuzzTarget FuzzIniFile;

// The memory of an inspected process. Built for a 32-bit and for a 64-bit caller.
FuzzTarget FuzzTargetMemory;
