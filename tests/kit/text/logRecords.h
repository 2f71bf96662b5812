// Log records in the form in which tests compare them: whole, with time, line and thread masked.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kit {

// "TIME [TRACE][mordRev.cpp LINE][CMordRecv::Init] [THREAD] init get mid=A\r\n" from
// "2026-11-16 14:03:07 [TRACE][mordRev.cpp 120][CMordRecv::Init] [4312] init get mid=A\r\n". A record of another form
// comes back as it is, so that it equals no masked one.
std::string MaskRecord(std::string_view record);

// The masked records that a test expects. `site` is "mordRev.cpp CMordRecv::Init".
std::string Trace(std::string_view site, std::string_view message);
std::string Error(std::string_view site, std::string_view message);

} // namespace kit
