// Numbers with nouns.
#pragma once

#include <cstddef>
#include <string>

namespace mordhost {

// "1 event", "2 events". Without `plural`, the plural of the noun ends in s.
inline std::string Counted(size_t count, const std::string& noun, const std::string& plural = "") {
    return std::to_string(count) + ' ' + (count == 1 ? noun : plural.empty() ? noun + 's' : plural);
}

} // namespace mordhost
