#include "cli/liveArguments.h"

#include "system/stopRequest.h"

namespace mordhost {

void DeclareLiveOptions(Arguments& arguments, LiveOptions& options) {
    arguments.Number("--seconds", options.seconds);
    const auto addRange = [&options](const std::string& text) {
        std::string reason;
        if (const auto range = ParseAddressRange(text, reason)) {
            options.flagged.push_back(*range);
        }
        return reason;
    };
    arguments.Repeated("--flagged", addRange);
}

void RequireWholeTime(const LiveOptions& options) {
    if (options.seconds && StopRequested()) {
        throw Stopped("interrupted by " + StopCause() + " before the end of --seconds");
    }
}

} // namespace mordhost
