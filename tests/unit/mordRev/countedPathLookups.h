// Counts the path look-ups of the receiver. A program that contains countedPathLookups.cpp has
// CMordRecv::GetProcPathByPid wrapped.
#pragma once

#include <cstddef>

// Returns the number of look-ups since the start of the program.
size_t PathLookups();
