// The floor: the JSON work of an operation that nobody can avoid, done by RapidJSON as it comes, with its default
// flags, allocators and formats, and with nothing around it. It is what decisions are measured against.
//
// The texts are those that the library writes and parses, byte for byte (measureEvents.cpp compares them). Numbers are
// there as text already. No settings are made for RapidJSON, in this file or in the build.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace bench {

// F, the floor of one event: the request is written, the answer parsed, the report written. Returns the number of
// characters written and members parsed, so that nothing of it can be left out.
size_t EventFloor(const std::vector<std::string>& guids, const std::string& answer);

// The request and the report as the floor writes them.
std::string RequestText(const std::vector<std::string>& guids);
std::string ReportText(const std::vector<std::string>& guids);

// The floor of an allow list: it is parsed, and the ordered map of ordered sets filled from what was parsed. Returns
// the map's number of machine ids.
size_t AllowListFloor(const std::string& text);

} // namespace bench
