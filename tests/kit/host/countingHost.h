// A host and a sink that allocate nothing and count their calls.
#pragma once

#include <string>

#include "frame/interfaces.h"
#include "frame/values.h"

namespace kit {

// Answers each query with the same buffer.
class CountingHost : public IDotHost {
public:
    int32_t DeleteDot(const char*, const char*, int32_t, const char*) override {
        ++deletions;
        return 0;
    }
    int32_t QueryDot(const char*, const char*, char** result) override {
        ++queries;
        if (hasAnswer) {
            ++answersOut;
            *result = answer.data();
        }
        return queryCode;
    }
    int32_t FreeResult(char* result) override {
        answersOut -= result != nullptr ? 1 : 0;
        return 0;
    }

    std::string answer;
    bool hasAnswer = true;
    int32_t queryCode = DOT_QUERY_ANSWERED;
    int queries = 0;
    int deletions = 0;
    int answersOut = 0; // answers that the library has not returned
};

class CountingSink : public IReportSink {
public:
    int32_t Report(int32_t, const char*, uint32_t) override {
        ++reports;
        return 0;
    }

    int reports = 0;
};

} // namespace kit
