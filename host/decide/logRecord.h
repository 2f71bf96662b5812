// Log records of the library, taken apart.
#pragma once

#include <optional>
#include <string_view>

namespace mordhost {

// The message of one record, which may have several lines; `record` may end in carriage return and line feed:
//
//     2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] logger is ready
//
// Nothing for a text in which no thread is told.
std::optional<std::string_view> MessageOf(std::string_view record);

} // namespace mordhost
