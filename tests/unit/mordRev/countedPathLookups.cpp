#include "unit/mordRev/countedPathLookups.h"

#include <atomic>
#include <cstdint>
#include <string>

// The linker's names for the wrapped function.
extern "C" {
bool __real__ZN9CMordRecv16GetProcPathByPidEjPNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(uint32_t pid,
                                                                                                   std::string* path);
bool __wrap__ZN9CMordRecv16GetProcPathByPidEjPNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(uint32_t pid,
                                                                                                   std::string* path);
}

namespace {

std::atomic<size_t> lookups = 0;

} // namespace

bool __wrap__ZN9CMordRecv16GetProcPathByPidEjPNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(uint32_t pid,
                                                                                                   std::string* path) {
    ++lookups;
    return __real__ZN9CMordRecv16GetProcPathByPidEjPNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE(pid, path);
}

size_t PathLookups() {
    return lookups;
}
