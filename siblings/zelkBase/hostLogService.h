// IHostLog, and the creation of log writers.
#pragma once

#include "serviceObject.h"
#include "zelkBase/hostLog.h"

namespace siblings {

// The writer is a setting of the library: all objects share it, and it survives them.
class HostLogService final : public ServiceObject<HostLogService, IHostLog> {
public:
    explicit HostLogService(const GUID& id = SID_HostLog) : ServiceObject(id) {}

    int32_t SetLogWriter(ILogWriter* writer) override;

private:
    friend ServiceObject;
    ~HostLogService() = default;
};

// Returns the host's writer if one is set, otherwise a new LogWriter, with a reference for the caller. Any thread may
// call. Throws std::bad_alloc and what LogWriter throws.
ISmartUnknown* MakeLogWriter(const GUID& id);

} // namespace siblings
