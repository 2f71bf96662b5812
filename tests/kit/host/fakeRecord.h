// An event or a rule whose values a test sets.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "frame/interfaces.h"
#include "kit/text/callLog.h"

namespace kit {

// How GetString behaves for one key, if not as the contract requires.
struct StringBehaviour {
    int32_t firstResult = 201;
    std::optional<int32_t>
        firstSize{}; // what the first call stores in *size; by default the size of the text with its NUL
    int32_t secondResult = 0;
    bool writes = true;                  // whether the second call writes at all
    bool writesNul = true;               // whether it writes the NUL
    std::optional<int32_t> secondSize{}; // what the second call stores in *size; by default nothing
};

// Reads without a log allocate nothing, and several threads may read at once.
class FakeRecord : public IEventRecord {
public:
    FakeRecord() = default;

    // With `calls`, each read is logged as "NAME.GetInt32(key)" and so on.
    FakeRecord(std::string name, CallLog* calls) : m_name(std::move(name)), m_calls(calls) {}

    FakeRecord& Int32(const std::string& key, int32_t value);
    FakeRecord& Int64(const std::string& key, int64_t value);
    FakeRecord& String(const std::string& key, std::string value);
    FakeRecord& Behave(const std::string& key, StringBehaviour behaviour);

    // GetInt32 of `key` writes `value` and returns `result`.
    FakeRecord& FailingInt32(const std::string& key, int32_t value, int32_t result);

    // Reads of `key` return 0 and write nothing.
    FakeRecord& Unwritten(const std::string& key);

    // GetInt64 of `key` writes `value` and returns `result`.
    FakeRecord& Int64WithResult(const std::string& key, int64_t value, int32_t result);

    // All keys that no other operation names have this value.
    FakeRecord& OtherNumbers(int32_t value);
    FakeRecord& OtherStrings(std::string value);

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    template <typename Number>
    struct Scripted {
        Number value;
        int32_t result;
        bool writes = true;

        int32_t Read(Number& number) const;
    };
    template <typename Value>
    using ByKey = std::map<std::string, Value, std::less<>>; // std::less<> looks up a key without a copy of it

    void Log(const char* operation, const char* key);

    std::string m_name;
    CallLog* m_calls = nullptr;
    ByKey<Scripted<int32_t>> m_int32;
    ByKey<Scripted<int64_t>> m_int64;
    ByKey<std::string> m_strings;
    ByKey<StringBehaviour> m_behaviours;
    std::optional<int32_t> m_otherNumber;
    std::optional<std::string> m_otherString;
};

// A rule.
FakeRecord MakeRule(const std::string& guid, const std::string& type);

// A text that is too long for the buffer within a std::string.
constexpr const char* fullRecordText = "a text that is too long to be kept without an allocation";

// A rule or an event that has every value: "pid" is 4, "flags" is 0, all other numbers are 1, all other texts are
// `fullRecordText`.
FakeRecord MakeFullRecord(const std::string& guid, const std::string& type);

} // namespace kit
