// The log sites.
//
//     LOG_TRACE(WIDE("init get mid=") << m_mid);
//
// The message is what goes into a LogStream. With both log flags off a site costs their two reads: the message is not
// evaluated and no stream is built. A stream lives as long as the record of its site; not to be used in a lambda, whose
// signature is no function's name.
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
