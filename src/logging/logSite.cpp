#include "logging/logSite.h"

#include "logging/logTimestamp.h"
#include "platform/platform.h"

namespace {

using Literal = std::basic_string_view<WideChar>; // its length is a compile-time constant

constexpr Literal errorText = WIDE(" [ERROR][");
constexpr Literal traceText = WIDE(" [TRACE][");
constexpr Literal blank = WIDE(" ");
constexpr Literal nextField = WIDE("][");
constexpr Literal threadField = WIDE("] [");

} // namespace

void BeginRecord(LogStream& stream, int32_t level, const LogSite& site) {
    const uint32_t thread = platform::GetCurrentThreadId(); // before the time
    // File, function and the end of the thread field are narrow text, and are therefore empty without a converter.
    stream << LogTimestamp().View() << (level == LOG_LEVEL_ERROR ? errorText : traceText) << site.file << blank
           << site.line << nextField << site.function << threadField << thread << "] ";
}
