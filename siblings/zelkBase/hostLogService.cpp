#include "zelkBase/hostLogService.h"

#include <atomic>

#include "zelkBase/logWriter.h"

namespace siblings {

namespace {

constinit std::atomic<ILogWriter*> hostWriter = nullptr;

} // namespace

int32_t HostLogService::SetLogWriter(ILogWriter* writer) {
    hostWriter = writer;
    return Signed(RESULT_OK);
}

ISmartUnknown* MakeLogWriter(const GUID& id) {
    if (ILogWriter* const writer = hostWriter) {
        writer->AddRef();
        return writer;
    }
    return new LogWriter(id);
}

} // namespace siblings
