#include "logging/logSite.h"

#include "logging/logTimestamp.h"
#include "platform/platform.h"

void BeginRecord(LogStream& stream, int32_t level, const LogSite& site) {
    const uint32_t thread = platform::GetCurrentThreadId(); // before the time
    const WideChar* const levelText = level == LOG_LEVEL_ERROR ? WIDE(" [ERROR][") : WIDE(" [TRACE][");
    // File, function and the end of the thread field are narrow, and so go blank without a converter.
    stream << LogTimestamp().View() << levelText << site.file << WIDE(" ") << site.line << WIDE("][") << site.function
           << WIDE("] [") << thread << "] ";
}
