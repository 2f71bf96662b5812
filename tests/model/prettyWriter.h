// Pretty-printed JSON, as requests and reports are written: four blanks a level, each member and element on a line of
// its own, one blank behind the colon, nothing behind the last brace.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace model {

// `text` between quotes. Quote, backslash and control characters are escaped; all other bytes are unchanged, the
// bytes from 0x80 up and the slash included.
std::string Quoted(std::string_view text);

// The array of `texts`, at least one, as the value of a member of the root.
std::string StringArray(const std::vector<std::string>& texts);

// An object with these members, at least one; the values are JSON already.
struct WrittenMember {
    std::string name;
    std::string value;
};
std::string RootObject(const std::vector<WrittenMember>& members);

} // namespace model
