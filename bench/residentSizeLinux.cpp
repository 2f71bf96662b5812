#include <fstream>

#include <unistd.h>

#include "residentSize.h"

namespace bench {

size_t ResidentSize() {
    std::ifstream file("/proc/self/statm");
    size_t all = 0;
    size_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace bench
