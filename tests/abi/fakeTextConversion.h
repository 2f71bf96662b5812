/* The two directions of the fake converter, with a check of every field of a request. */
#pragma once

#include "slots.h"

enum { CONVERT_NARROW_TO_WIDE = 0x10101, CONVERT_WIDE_TO_NARROW = 0x10100 };

/* Each returns 1, or 0 for a request that is not as the contract has it. The whole destination is written over first,
 * so that a capacity that promises too much is seen by the tools that watch memory. Characters beyond U+FFFF do not
 * occur here. */
int ConvertToWide(const TextConversionRequest* request);
int ConvertToNarrow(const TextConversionRequest* request);
