// IHostLog, and the log writer that it leads to.
#pragma once

#include "serviceObject.h"
#include "zelkBase/hostLog.h"

namespace siblings {

// The writer is the library's, whichever object of this class it was set through, and stays when the object goes.
class HostLogService final : public ServiceObject<HostLogService, IHostLog> {
public:
    explicit HostLogService(const GUID& id = SID_HostLog) : ServiceObject(id) {}

    int32_t SetLogWriter(ILogWriter* writer) override;

private:
    friend ServiceObject;
    ~HostLogService() = default;
};

// The host's writer if there is one, otherwise a new LogWriter; with a reference for the caller. May throw.
ISmartUnknown* MakeLogWriter(const GUID& id);

} // namespace siblings
