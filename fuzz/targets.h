// The fuzzed targets. Each takes one input, returns when all of it held, and ends the process when something did not.
// What one input leaves behind does not change what becomes of the next.
//
// The targets of a target's memory, which are built for two widths of caller, stand in targetMemory.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

// The three documents. An input is a text; for the tables, that of several documents, a NUL between each two, which are
// given to the receiver in turn.
void FuzzAllowList(const uint8_t* data, size_t size);
void FuzzActionTable(const uint8_t* data, size_t size);
void FuzzQueryResult(const uint8_t* data, size_t size);

// One event whose records answer anything to each read.
void FuzzHostRecords(const uint8_t* data, size_t size);

// One event whose host answers anything to each call, and calls the receiver from within.
void FuzzHostAnswers(const uint8_t* data, size_t size);

// The text of an ini file.
void FuzzIniFile(const uint8_t* data, size_t size);
