// Words shared by the rules, documents and answers of the fuzzers, so that they match each other.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

inline constexpr std::array<std::string_view, 8> words = {
    "G",         "K", "web", "", "M", "10.0.0.1", "a text that is longer than any string keeps without an allocation",
    "\x80\xFF\""};

inline std::string_view Word(size_t index) {
    return words[index % words.size()];
}

// Documents that fill the tables.
inline constexpr const char* knownAllowList =
    R"({"mid_list":[{"mid":"M","protocol":["K","G",""]},{"mid":"N","protocol":["K"]}]})";
inline constexpr const char* knownActions = R"({"A":1,"K":0})";
inline constexpr const char* knownAnswer =
    R"({"G":{"value":1,"mid":{"M":1,"X":1}},"K":{"value":1,"mid":{"X":1}},"":{"value":1,"mid":{}},"web":{"value":0}})";
