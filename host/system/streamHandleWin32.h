// The handles of the standard streams.
#pragma once

#include <windows.h>

#include "system/hostSystem.h"

namespace mordhost {

inline HANDLE HandleOf(Stream stream) {
    return GetStdHandle(stream == Stream::input    ? STD_INPUT_HANDLE
                        : stream == Stream::output ? STD_OUTPUT_HANDLE
                                                   : STD_ERROR_HANDLE);
}

} // namespace mordhost
