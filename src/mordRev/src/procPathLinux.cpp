// The image path of a process on Linux: the target of /proc/PID/exe.
#include <filesystem>
#include <system_error>

#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/procPathText.h"

bool CMordRecv::GetProcPathByPid(uint32_t pid, std::string* path) {
    path->clear();
    const std::filesystem::path process = "/proc/" + std::to_string(pid);
    std::error_code error;
    if (!std::filesystem::exists(process, error)) {
        const int reason = error ? error.value() : static_cast<int>(std::errc::no_such_process);
        LOG_ERROR(WIDE("Open process failed!") << WIDE(" pid=") << pid << WIDE(" ,lasterror=") << reason);
        return false;
    }
    const std::filesystem::path image = std::filesystem::read_symlink(process / "exe", error);
    if (error) {
        // Access denied, a kernel thread, or the process has ended meanwhile.
        LOG_ERROR(WIDE("get process path fail, pid=") << pid);
        return false;
    }
    *path = image.native();
    LowerCaseAscii(*path); // as on Windows, so that reports of all hosts are comparable
    return true;
}
