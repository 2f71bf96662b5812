#include "fuzz/iniFile/fileInMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/require.h"

const std::string& FileInMemory(const std::string& bytes) {
    static const int file = memfd_create("ini", MFD_CLOEXEC);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    const auto size = static_cast<off_t>(bytes.size());
    Require(ftruncate(file, size) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) == size,
            "the file in memory can be written");
    return path;
}
