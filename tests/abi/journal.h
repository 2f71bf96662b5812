/* The notes that a test compares: those of its own fakes and of the fake siblings, in one order; C and C++. One thread
 * at a time. */
#pragma once

#include "slots.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Appends a line. */
void ABI_FACTORY WriteJournal(const char* line);

/* All lines since the last call, each with a line feed behind it. Valid until the next call. */
const char* TakeJournal(void);

#ifdef __cplusplus
}
#endif
