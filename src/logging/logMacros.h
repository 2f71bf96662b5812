// The macros of log sites.
//
//     LOG_TRACE(WIDE("init get mid=") << m_mid);
//
// `message` is a chain of insertions into a LogStream. With both log flags off, a site costs two flag reads: the
// message is not evaluated and no stream is built. Any thread may log. Throws only std::bad_alloc, from the conversion
// of narrow text, and what the message itself throws.
//
// Not for lambdas: their signature contains no function name.
#pragma once

#include "logging/logSite.h"
#include "logging/logState.h"

#define LOG_TRACE(message) LOG_RECORD(LOG_LEVEL_TRACE, message)
#define LOG_ERROR(message) LOG_RECORD(LOG_LEVEL_ERROR, message)

#define LOG_RECORD(recordLevel, message)                                                                               \
    do {                                                                                                               \
        if (LoggingEnabled()) {                                                                                        \
            static constexpr LogFunctionName logFunction(__PRETTY_FUNCTION__);                                         \
            static constexpr LogSite logSite{LogFileName(__FILE__), __LINE__, logFunction.text};                       \
            LogStream logStream(recordLevel);                                                                          \
            BeginRecord(logStream, recordLevel, logSite);                                                              \
            logStream << message;                                                                                      \
            logStream.EndRecord();                                                                                     \
        }                                                                                                              \
    } while (false)
