// The host's answer to a query: ownership of its buffer, and its parsed content.
//
// An answer is {"GUID": {"value": 1, "mid": {"MID-1": …, "MID-2": …}}, …}.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/interfaces.h"

// Owns the buffer that IDotHost::QueryDot delivers, null or not. GiveBack returns it to the host, Keep leaves it;
// otherwise the destructor returns it, for example after an exception. Belongs to one thread.
class DotAnswer {
public:
    explicit DotAnswer(IDotHost* host) : m_host(host) {}
    ~DotAnswer() { GiveBack(); }
    DotAnswer(const DotAnswer&) = delete;
    DotAnswer& operator=(const DotAnswer&) = delete;

    // The place for QueryDot to store its answer; null before.
    char** Out() { return &m_text; }
    const char* Text() const { return m_text; }

    // Copies the text, which must not be null, for a reader that outlives the buffer. Throws std::bad_alloc.
    std::string Copy() const;

    // Calls FreeResult, at most once in the life of the object, even if the host throws. That exception passes through;
    // thrown from the destructor it ends the process.
    void GiveBack() {
        char* const text = std::exchange(m_text, nullptr);
        if (IDotHost* const host = std::exchange(m_host, nullptr)) {
            host->FreeResult(text);
        }
    }

    // Never returns the buffer to the host.
    void Keep() { m_host = nullptr; }

private:
    IDotHost* m_host;
    char* m_text = nullptr;
};

// The content of an answer for one rule: a member of the root.
struct AnsweredRule {
    enum class Value { malformed, zero, good }; // malformed: missing, or not a signed 32-bit number

    // The members of "mid": a range of QueryAnswer::mids.
    struct Mids {
        size_t first;
        size_t count;
    };

    std::string_view guid;
    Value value = Value::malformed;
    std::optional<Mids> mids = std::nullopt; // none: "mid" is missing or not an object
};

// A parsed answer. Owns the text that its views point into, so it must not move. A NUL follows each of these texts.
struct QueryAnswer {
    explicit QueryAnswer(std::string document) : text(std::move(document)) {}
    QueryAnswer(const QueryAnswer&) = delete;
    QueryAnswer& operator=(const QueryAnswer&) = delete;

    // Parses `text` up to its first NUL and overwrites it. Returns false if it is not JSON; rules and mids are then
    // undefined. A root that is not an object has no members. If a rule has several members of the same name, the first
    // counts. Throws std::bad_alloc. Logs nothing.
    bool Read();

    std::string text;
    std::vector<AnsweredRule> rules;    // in document order, like mids
    std::vector<std::string_view> mids; // of all rules
};
