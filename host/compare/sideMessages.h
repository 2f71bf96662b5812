// The messages between mordhost and the second process, in which it decides by another policy.
//
// A message is its length (uint32_t) and its bytes. The second process reads a whole message before it answers, and
// mordhost reads the whole answer before it sends the next message, so that neither waits for a full pipe forever. The
// second process ends at the end of its input, however mordhost ends.
#pragma once

#include <cstdint>

namespace mordhost {

// The only argument of the second process.
constexpr auto secondProcessArgument = "second-process";

// The first byte of a message to the second process.
enum class SideRequest : uint8_t {
    start,   // policy name, policy text, directory of the libraries; answered by a StartAnswer
    decide,  // number of events, events; answered by one brief per event
    details, // number of indexes, indexes; answered by the members of a Detail per index
};

// The first byte of the answer to `start`. All but `started` are followed by a message for the user.
enum class StartAnswer : uint8_t { started, refused, notLoadable, failed };

} // namespace mordhost
