// The floor of an operation: its unavoidable JSON work, done by RapidJSON with its default flags, allocators and
// formats and nothing else. Decisions are compared with it.
//
// The texts are those that the library writes and parses, byte for byte (measureEvents.cpp compares them). Numbers are
// already texts. Neither this file nor the build configures RapidJSON.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace bench {

// F, the floor of one event: writes the request, parses the answer, writes the report. Returns the number of characters
// written and members parsed, so that the compiler cannot omit any of it.
size_t EventFloor(const std::vector<std::string>& guids, const std::string& answer);

// The request and the report that the floor writes.
std::string RequestText(const std::vector<std::string>& guids);
std::string ReportText(const std::vector<std::string>& guids);

// The floor of an allow list: parses it and fills an ordered map of ordered sets. Returns the number of machine ids in
// the map.
size_t AllowListFloor(const std::string& text);

} // namespace bench
