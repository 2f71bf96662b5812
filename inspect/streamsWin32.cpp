#include "streams.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

#include <windows.h>

namespace mordinspect {

void PrepareStreams() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

} // namespace mordinspect
