#include "residentSize.h"

#include <windows.h>

#include <psapi.h>

namespace bench {

size_t ResidentSize() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.WorkingSetSize;
}

} // namespace bench
