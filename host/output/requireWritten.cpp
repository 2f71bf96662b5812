#include "output/requireWritten.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "system/runError.h"

namespace mordhost {

void RequireWritten(const std::ostream& stream, std::string_view name) {
    const int error = errno;
    if (!stream) {
        throw RunError("cannot write " + std::string(name) + ": " +
                       (error != 0 ? std::generic_category().message(error) : "output is lost"));
    }
}

} // namespace mordhost
