#include "cli/liveArguments.h"

namespace mordhost {

void DeclareLiveOptions(Arguments& arguments, LiveOptions& options) {
    constexpr unsigned year = 31536000; // seconds
    arguments.Number("--seconds", "N", options.seconds, 1, year, "Stop after N seconds instead of at an interruption");
    const auto addRange = [&options](const std::string& text) {
        std::string reason;
        if (const auto range = ParseAddressRange(text, reason)) {
            options.flagged.push_back(*range);
        }
        return reason;
    };
    arguments.Repeated("--flagged", "RANGE", addRange,
                       "Set the flag 0x10 in events whose remote end is in RANGE; may be repeated");
}

} // namespace mordhost
