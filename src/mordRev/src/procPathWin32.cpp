// The image path of a process, on Windows.
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "platform/platform.h"

namespace {

constexpr uint32_t processQueryInformation = 0x400;
constexpr uint32_t processVmRead = 0x10;

} // namespace

bool CMordRecv::GetProcPathByPid(uint32_t pid, std::string* path) {
    path->clear();
    const platform::ProcessHandle process = platform::OpenProcess(processQueryInformation | processVmRead, false, pid);
    if (process == nullptr) {
        // Read at once, and only for the record: what builds a record may change it.
        const uint32_t lastError = LoggingEnabled() ? platform::GetLastError() : 0;
        LOG_ERROR(WIDE("Open process failed!") << WIDE(" pid=") << pid << WIDE(" ,lasterror=") << lastError);
        return false;
    }
    LOG_ERROR(WIDE("get process path fail, pid=") << pid);
    platform::CloseHandle(process);
    return false;
}
