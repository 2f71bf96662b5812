#include "kit/system/repeatedMemoryLinux.h"

#include <cerrno>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

namespace kit {

namespace {

void Require(bool succeeded, const char* what) {
    if (!succeeded) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

} // namespace

RepeatedMemory::RepeatedMemory(size_t size) : m_size((size / period + 1) * period) {
    const int file = memfd_create("repeatedMemory", MFD_CLOEXEC);
    Require(file >= 0 && ftruncate(file, period) == 0, "memfd_create");
    m_area = mmap(nullptr, m_size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    Require(m_area != MAP_FAILED, "address space");
    for (size_t offset = 0; offset < m_size; offset += period) {
        void* const place = static_cast<char*>(m_area) + offset;
        Require(mmap(place, period, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) == place, "mmap");
    }
    close(file);
}

RepeatedMemory::~RepeatedMemory() {
    munmap(m_area, m_size);
}

void RepeatedMemory::Separate(size_t offset) {
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    void* const place = static_cast<char*>(m_area) + offset;
    Require(mmap(place, page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == place, "mmap");
}

} // namespace kit
