// The log records of the library, in the form that the model uses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/trace.h"
#include "platform/wideChar.h"

namespace model {

// One byte for each unit below 0x100; other units as \wNUMBER.
std::string Narrow(std::basic_string_view<WideChar> text);

// Adds the record without time, file, line and thread. A record that is not complete (time, level, a bare file name,
// line, function, thread, message, line end), or whose text names another level, is added as a whole and so differs.
void AddRecord(int32_t level, std::basic_string_view<WideChar> record, Trace& trace);

} // namespace model
