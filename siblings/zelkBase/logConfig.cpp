#include "zelkBase/logConfig.h"

#include "zelkBase/logDirectory.h"

namespace siblings {

LogConfig::LogConfig(const GUID& id) : ServiceObject(id), m_directory(LogDirectory()) {}

const WideChar* LogConfig::GetConfigText(uint32_t code, uint32_t) {
    return code == LOG_CONFIG_DIRECTORY && !m_directory.empty() ? m_directory.c_str() : nullptr;
}

} // namespace siblings
