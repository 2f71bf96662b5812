// ILogConfig: the location of the log settings.
#pragma once

#include "serviceObject.h"
#include "zelkBase/unicode.h"

namespace siblings {

// Determines the directory (logDirectory.h) in its constructor, which can throw std::bad_alloc, and keeps it.
// GetConfigText returns it for the code 0x200002, and null for any other code or if there is no directory. The text is
// valid as long as the object. The second argument is ignored. Any thread may call.
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
