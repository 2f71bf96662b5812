// Conversion between narrow UTF-8 and wide UTF-16 text, through the converter of the base library.
//
// Neither routine reports a failure: without a converter both give an empty text, whatever the source. The converter is
// looked for once in the process, at the first conversion of a text that is not empty; what was missing then stays
// missing. Any thread may call.
#pragma once

#include <string>

#include "platform/wideChar.h"

// The wide form of NUL-ended narrow text. `text` may be null, which is empty.
std::basic_string<WideChar> Utf8ToWide(const char* text);

// The narrow form of NUL-ended wide text. `text` may be null, which is empty.
std::string WideToUtf8(const WideChar* text);
