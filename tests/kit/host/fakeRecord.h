// An event or a rule whose values a test sets.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "frame/interfaces.h"
#include "kit/text/callLog.h"

namespace kit {

// How GetString behaves for one key, where a test wants something else than the contract's two calls.
struct StringBehaviour {
    int32_t firstResult = 201;
    std::optional<int32_t> firstSize{}; // what the first call stores in *size; the text and its NUL without it
    int32_t secondResult = 0;
    bool writes = true;                  // whether the second call writes at all
    bool writesNul = true;               // whether it writes the NUL
    std::optional<int32_t> secondSize{}; // what the second call stores in *size; it is left alone without it
};

class FakeRecord : public IEventRecord {
public:
    FakeRecord() = default;

    // Reads are logged as "NAME.GetInt32(key)" and so on, when a log is given.
    FakeRecord(std::string name, CallLog* calls) : m_name(std::move(name)), m_calls(calls) {}

    FakeRecord& Int32(const std::string& key, int32_t value);
    FakeRecord& Int64(const std::string& key, int64_t value);
    FakeRecord& String(const std::string& key, std::string value);
    FakeRecord& Behave(const std::string& key, StringBehaviour behaviour);

    // GetInt32 of `key` writes `value` and returns `result` all the same.
    FakeRecord& FailingInt32(const std::string& key, int32_t value, int32_t result);

    // Reads of `key` return 0 and write nothing.
    FakeRecord& Unwritten(const std::string& key);

    // GetInt64 of `key` writes `value` and returns `result`.
    FakeRecord& Int64WithResult(const std::string& key, int64_t value, int32_t result);

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    template <typename Number>
    struct Scripted {
        Number value;
        int32_t result;
        bool writes = true;
    };

    void Log(const char* operation, const char* key);

    std::string m_name;
    CallLog* m_calls = nullptr;
    std::map<std::string, Scripted<int32_t>> m_int32;
    std::map<std::string, Scripted<int64_t>> m_int64;
    std::map<std::string, std::string> m_strings;
    std::map<std::string, StringBehaviour> m_behaviours;
};

// The records that most tests need.
FakeRecord MakeRule(const std::string& guid, const std::string& type);

} // namespace kit
