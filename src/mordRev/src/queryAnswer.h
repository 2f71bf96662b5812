// The host's answer to a query: its buffer, and what it says.
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

// Owns the buffer that IDotHost::QueryDot delivers, null or not. It goes back to the host by GiveBack, unless it is
// kept; where an exception passes before either, the end of the scope gives it back.
class DotAnswer {
public:
    explicit DotAnswer(IDotHost* host) : m_host(host) {}
    ~DotAnswer() { GiveBack(); }
    DotAnswer(const DotAnswer&) = delete;
    DotAnswer& operator=(const DotAnswer&) = delete;

    // Where QueryDot stores its answer; null before.
    char** Out() { return &m_text; }
    const char* Text() const { return m_text; }

    // The text, which must not be null, for a reader that outlives the buffer.
    std::string Copy() const;

    // Calls FreeResult, once in the life of the object: a host that throws there is not asked again. Its exception
    // passes; at the end of the scope it ends the process.
    void GiveBack() {
        char* const text = std::exchange(m_text, nullptr);
        if (IDotHost* const host = std::exchange(m_host, nullptr)) {
            host->FreeResult(text);
        }
    }

    // The buffer never goes back.
    void Keep() { m_host = nullptr; }

private:
    IDotHost* m_host;
    char* m_text = nullptr;
};

// What an answer says of one rule: a member of the root.
struct AnsweredRule {
    enum class Value { malformed, zero, good }; // malformed: missing, or no number that fits 32 signed bits

    // The members of "mid", which stand side by side in QueryAnswer::mids.
    struct Mids {
        size_t first;
        size_t count;
    };

    std::string_view guid;
    Value value = Value::malformed;
    std::optional<Mids> mids = std::nullopt; // none: "mid" is missing, or no object
};

// Owns the text that the views point into, and so must stay where it is. A NUL stands behind each of these texts.
struct QueryAnswer {
    explicit QueryAnswer(std::string document) : text(std::move(document)) {}
    QueryAnswer(const QueryAnswer&) = delete;
    QueryAnswer& operator=(const QueryAnswer&) = delete;

    // Reads `text` up to its first NUL and destroys it on the way. False when it is no JSON. A root that is no object
    // is one without members. Of the members of a rule with the same name the first counts.
    bool Read();

    std::string text;
    std::vector<AnsweredRule> rules;    // in document order, which is also that of mids
    std::vector<std::string_view> mids; // of all rules
};
