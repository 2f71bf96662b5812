// The second process of a comparison.
#pragma once

#include <istream>
#include <ostream>
#include <string>

namespace mordhost {

// Answers messages (sideMessages.h) from `in` on `out` until `in` ends. Throws RunError for a message that mordhost
// does not send.
void ServeSide(std::istream& in, std::ostream& out, const std::string& hostVersion);

} // namespace mordhost
