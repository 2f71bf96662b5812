// ILogConfig: where the log settings stand.
#pragma once

#include "serviceObject.h"
#include "zelkBase/unicode.h"

namespace siblings {

// Looks up the directory (logDirectory.h) when it is made, and keeps it. GetConfigText gives it for the code 0x200002,
// and null for any other code or if there is no directory. Its second argument plays no part. Any thread may call.
class LogConfig final : public ServiceObject<LogConfig, ILogConfig> {
public:
    explicit LogConfig(const GUID& id = SID_LogConfig);

    const WideChar* GetConfigText(uint32_t code, uint32_t zero) override;

private:
    friend ServiceObject;
    ~LogConfig() = default;

    const WideString m_directory;
};

} // namespace siblings
