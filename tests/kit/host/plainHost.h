// A host, a sink and records that allocate nothing, so that what is counted or fails is the library's own.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "frame/interfaces.h"
#include "frame/values.h"

// A record with the texts "guid" and "type", the same text under every other name, and the numbers "pid" 4 and "flags".
class PlainRecord : public IEventRecord {
public:
    PlainRecord(std::string guid, std::string type) : m_guid(std::move(guid)), m_type(std::move(type)) {}

    int32_t GetInt32(const char* name, int32_t* value) override {
        *value = std::strcmp(name, "pid") == 0 ? 4 : std::strcmp(name, "flags") == 0 ? flags : 1;
        return RECORD_DELIVERED;
    }
    int32_t GetInt64(const char*, int64_t* value) override {
        *value = 1;
        return RECORD_DELIVERED;
    }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        const std::string& text = std::strcmp(name, "guid") == 0   ? m_guid
                                  : std::strcmp(name, "type") == 0 ? m_type
                                                                   : m_other;
        if (buffer == nullptr) {
            *size = static_cast<int32_t>(text.size() + 1);
            return RECORD_BUFFER_NEEDED;
        }
        std::copy_n(text.c_str(), text.size() + 1, buffer);
        return RECORD_DELIVERED;
    }

    static constexpr const char* otherText = "a text that is too long to be kept without an allocation";

    int32_t flags = 0;

private:
    std::string m_guid;
    std::string m_type;
    std::string m_other = otherText;
};

// Answers each query with the same buffer.
class PlainHost : public IDotHost {
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
    int answersOut = 0;
};

class PlainSink : public IReportSink {
public:
    int32_t Report(int32_t, const char*, uint32_t) override {
        ++reports;
        return 0;
    }

    int reports = 0;
};
