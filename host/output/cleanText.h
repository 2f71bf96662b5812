// Text of any origin as well-formed UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace mordhost {

// The text with a question mark for each byte that is not part of well-formed UTF-8, and for the two code points U+FFFE
// and U+FFFF, which XML excludes. Keeps control characters.
std::string WellFormed(std::string_view text);

// The text without control characters too: each is a question mark, as in Printable. A tab is a blank.
std::string CleanText(std::string_view text);
void AppendClean(std::string& out, std::string_view text);

} // namespace mordhost
