// The image path of a process on Windows: the path in the parameters block of the process itself.
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/procPathText.h"
#include "native/scopedHandle.h"
#include "native/targetProcess.h"
#include "platform/platform.h"
#include "text/textConvert.h"

namespace {

constexpr uint32_t processQueryInformation = 0x400;
constexpr uint32_t processVmRead = 0x10;

} // namespace

bool CMordRecv::GetProcPathByPid(uint32_t pid, std::string* path) {
    path->clear();
    ScopedHandle process(platform::OpenProcess(processQueryInformation | processVmRead, false, pid));
    if (!process) {
        // Read first, and only if it is logged: building a record can change it.
        const uint32_t lastError = LoggingEnabled() ? platform::GetLastError() : 0;
        LOG_ERROR(WIDE("Open process failed!") << WIDE(" pid=") << pid << WIDE(" ,lasterror=") << lastError);
        return false;
    }
    TargetProcess target(process.Get(), 0);
    const auto imagePath = target.ReadImagePath();
    if (imagePath == nullptr) {
        LOG_ERROR(WIDE("get process path fail, pid=") << pid);
        process.Close(); // before the objects that use it are destroyed, by design
        return false;
    }
    *path = WideToUtf8(imagePath->buffer.get());
    LowerCaseAscii(*path);
    process.Close();
    return true;
}
