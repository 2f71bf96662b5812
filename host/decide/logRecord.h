// Parses log records of the library.
#pragma once

#include <optional>
#include <string_view>

namespace mordhost {

// The message of one record. It may have several lines. The record may end in carriage return and line feed:
//
//     2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] logger is ready
//
// Returns nullopt for a text without a thread id.
std::optional<std::string_view> MessageOf(std::string_view record);

} // namespace mordhost
