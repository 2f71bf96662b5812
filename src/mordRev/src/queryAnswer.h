// The host's answer to a query: ownership of its buffer, and its parsed content.
//
// An answer is {"GUID": {"value": 1, "mid": {"MID-1": …, "MID-2": …}}, …}.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "frame/interfaces.h"
#include "mordRev/src/blockMemory.h"
#include "mordRev/src/queryResultTable.h"

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

    // The text, which must not be null, without its NUL.
    std::string_view View() const;

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

    std::string_view guid;
    Value value = Value::malformed;
    std::optional<MidSet> mids = std::nullopt; // none: "mid" is missing or not an object
};

// A parsed answer. Owns all texts and lists that it returns. A NUL follows each text.
class QueryAnswer {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default): the arrays stay
    // uninitialised
    QueryAnswer() {}
    QueryAnswer(const QueryAnswer&) = delete;
    QueryAnswer& operator=(const QueryAnswer&) = delete;

    // Parses `text` up to its first NUL, once; a NUL must follow it. The text is not needed afterwards. Returns false
    // if it is not JSON. A root that is not an object has no members. If a rule has several members of the same name,
    // the first counts. Throws std::bad_alloc. Logs nothing.
    bool Read(std::string_view text);

    // In document order.
    std::span<const AnsweredRule> Rules() const { return ItemsOf<AnsweredRule>(m_rules); }

private:
    // Enough for an event of about 64 rules with 16 machine ids each. The object fills a block.
    alignas(void*) char m_firstRules[6144];
    alignas(void*) char m_firstMids[18432];
    char m_firstTexts[40448];

    BlockMemory m_rules{m_firstRules, sizeof m_firstRules}; // AnsweredRule, one piece
    BlockMemory m_mids{m_firstMids, sizeof m_firstMids};    // std::string_view, a piece for each rule
    BlockMemory m_texts{m_firstTexts, sizeof m_firstTexts}; // a piece for each text
};
