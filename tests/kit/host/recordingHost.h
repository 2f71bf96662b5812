// A dot host and a report sink that answer as a test tells and keep what they were given.
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "kit/text/callLog.h"

namespace kit {

// Calls go into the log as
//     QueryDot(<request>,<mid>)   DeleteDot(<guid>,<mid>,<kind>,<type>)   FreeResult(answer 1)   FreeResult(null)
// where answers are numbered from 1 in the order in which they were handed out. May be used by several threads at once.
class RecordingHost : public IDotHost {
public:
    explicit RecordingHost(CallLog& calls) : m_calls(calls) {}
    ~RecordingHost();
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    int32_t queryCode = 0;
    std::optional<std::string> answer; // no value: *result stays null. Handed out whole, NULs inside included.
    int32_t deleteCode = 0;
    int32_t freeCode = 0;
    std::function<void()> onQuery;  // called within QueryDot, before it answers
    std::function<void()> onDelete; // called within DeleteDot
    bool logsCalls = true;

    // How many answers have not come back. A FreeResult of an unknown or freed pointer is logged as
    // "FreeResult(unknown)".
    size_t AnswersOut() const;

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override;
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override;
    int32_t FreeResult(char* result) override;

private:
    void Log(std::string call);

    CallLog& m_calls;
    mutable std::mutex m_lock;
    std::map<char*, int> m_answers; // those that are out, with their numbers
    int m_handedOut = 0;
};

// Calls go into the log as Report(<kind>,<text>). The size must be that of the text.
class RecordingSink : public IReportSink {
public:
    explicit RecordingSink(CallLog& calls) : m_calls(calls) {}

    int32_t result = 0;
    std::function<void()> onReport; // called within Report

    std::vector<std::string> Reports() const;

    int32_t Report(int32_t kind, const char* text, uint32_t size) override;

private:
    CallLog& m_calls;
    mutable std::mutex m_lock;
    std::vector<std::string> m_reports;
};

} // namespace kit
