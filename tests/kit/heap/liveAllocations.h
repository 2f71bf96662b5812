// How many blocks of memory are allocated by new and not given back, in a program that links this.
#pragma once

#include <cstddef>

size_t LiveAllocations();
