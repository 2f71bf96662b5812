// The error of the last call of the Windows API.
#pragma once

#include <system_error>

#include <windows.h>

namespace mordhost {

inline std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

} // namespace mordhost
