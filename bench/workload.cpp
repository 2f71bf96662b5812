#include "workload.h"

#include <cstdio>
#include <cstring>

#include "eventTexts.h"
#include "frame/values.h"

namespace bench {

namespace {

constexpr int32_t systemPid = 4;

// The state of the host and the sink.
const char* currentAnswer = nullptr;
SeenTexts* seenTexts = nullptr;

// As long as a guid is.
std::string GuidOf(uint32_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x-52f1-4c07-9b1d-6a0c8e%06x", static_cast<unsigned>(number * 2654435761U),
                  static_cast<unsigned>(number));
    return text;
}

// 32 hexadecimal digits, different for each number.
std::string MidOf(uint32_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x%08x%08x%08x", static_cast<unsigned>(number * 2654435761U),
                  static_cast<unsigned>(number * 2246822519U), static_cast<unsigned>(number * 3266489917U),
                  static_cast<unsigned>(number));
    return text;
}

constexpr uint32_t firstOfAnswers = 0x80000000U; // the numbers below are those of allow lists

int32_t Give(const char* text, size_t length, char* buffer, int32_t* size) {
    const auto needed = static_cast<int32_t>(length + 1);
    if (buffer == nullptr) {
        *size = needed;
        return RECORD_BUFFER_NEEDED;
    }
    if (*size < needed) {
        return RECORD_BUFFER_NEEDED;
    }
    std::memcpy(buffer, text, length + 1);
    return RECORD_DELIVERED;
}

class Event final : public IEventRecord {
public:
    int32_t GetInt32(const char* name, int32_t* value) override {
        // The names differ in their first characters.
        *value = name[0] == 'p' ? systemPid : name[0] == 'f' ? 0 : name[0] == 'r' ? remotePort : localPort;
        return RECORD_DELIVERED;
    }
    int32_t GetInt64(const char*, int64_t* value) override {
        *value = driverVersion;
        return RECORD_DELIVERED;
    }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        return name[0] == 'r' ? Give(remoteIp, std::strlen(remoteIp), buffer, size)
                              : Give(localIp, std::strlen(localIp), buffer, size);
    }
};

Event theEvent;

class DotHost final : public IDotHost {
public:
    int32_t DeleteDot(const char*, const char*, int32_t, const char*) override { return 1; }
    int32_t QueryDot(const char* request, const char*, char** result) override {
        if (seenTexts != nullptr) {
            seenTexts->request = request;
        }
        *result = const_cast<char*>(currentAnswer); // the library returns it unchanged
        return DOT_QUERY_ANSWERED;
    }
    int32_t FreeResult(char*) override { return 0; }
};

class ReportSink final : public IReportSink {
public:
    int32_t Report(int32_t, const char* text, uint32_t size) override {
        if (seenTexts != nullptr) {
            seenTexts->report.assign(text, size);
        }
        return 0;
    }
};

} // namespace

class Workload::Rule final : public IEventRecord {
public:
    explicit Rule(const std::string& guid) : m_guid(&guid) {}

    int32_t GetInt32(const char*, int32_t*) override { return RECORD_BUFFER_NEEDED; }
    int32_t GetInt64(const char*, int64_t*) override { return RECORD_BUFFER_NEEDED; }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        return name[0] == 'g' ? Give(m_guid->data(), m_guid->size(), buffer, size)
                              : Give(ruleType, std::strlen(ruleType), buffer, size);
    }

private:
    const std::string* m_guid;
};

std::string AllowListText(uint32_t size) {
    std::string text = R"({"mid_list":[)";
    for (uint32_t n = 0; n < size; ++n) {
        text += n == 0 ? "" : ",";
        text += R"({"mid":")" + MidOf(n) + R"(","protocol":[")" + ruleType + R"("]})";
    }
    return text + "]}";
}

Workload::Workload(const Shape& shape) {
    m_answer = "{";
    uint32_t next = firstOfAnswers;
    for (uint32_t r = 0; r < shape.rules; ++r) {
        m_guids.push_back(GuidOf(r));
        m_answer += (r == 0 ? "\"" : ",\"") + m_guids.back() + R"(":{"value":1,"mid":{)";
        for (uint32_t m = 0; m < shape.mids; ++m) {
            m_answer += (m == 0 ? "\"" : ",\"") + MidOf(next++) + "\":1";
        }
        m_answer += "}}";
    }
    m_answer += '}';
    m_rules.reserve(shape.rules);
    for (const std::string& guid : m_guids) {
        m_rulePointers.push_back(&m_rules.emplace_back(guid));
    }
}

Workload::~Workload() = default;

void Workload::Select() const {
    currentAnswer = m_answer.c_str();
}

bool Workload::Decide(IMordRev& receiver) const {
    uint32_t reply = REPLY_ALLOW_FLAGGED;
    const bool matched =
        receiver.HandleEvent(&theEvent, const_cast<IEventRecord**>(m_rulePointers.data()),
                             static_cast<uint32_t>(m_rulePointers.size()), &reply); // the array is not written
    return !matched && reply == REPLY_BLOCK;
}

IDotHost& Host() {
    static DotHost host;
    return host;
}

IReportSink& Sink() {
    static ReportSink sink;
    return sink;
}

void KeepTextsIn(SeenTexts* texts) {
    seenTexts = texts;
}

} // namespace bench
