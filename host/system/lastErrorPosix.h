// The error of the last system call.
#pragma once

#include <cerrno>
#include <system_error>

namespace mordhost {

inline std::error_code LastError() {
    return {errno, std::generic_category()};
}

} // namespace mordhost
