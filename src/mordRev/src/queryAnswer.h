// The host's answer to a query: its buffer, and what it says.
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

    // The text, which must not be null, without its NUL.
    std::string_view View() const;

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

    std::string_view guid;
    Value value = Value::malformed;
    std::optional<MidSet> mids = std::nullopt; // none: "mid" is missing, or no object
};

// Owns all texts and lists that it gives out. A NUL stands behind each of the texts.
class QueryAnswer {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default): leaves the room as it is
    QueryAnswer() {}
    QueryAnswer(const QueryAnswer&) = delete;
    QueryAnswer& operator=(const QueryAnswer&) = delete;

    // Reads `text` up to its first NUL, once; a NUL must stand behind it. The text is not needed afterwards. False when
    // it is no JSON. A root that is no object is one without members. Of the members of a rule with the same name the
    // first counts.
    bool Read(std::string_view text);

    // In document order.
    std::span<const AnsweredRule> Rules() const { return ItemsOf<AnsweredRule>(m_rules); }

private:
    // Room for all of an event of about 64 rules with 16 machine ids each. The object fills a block with it.
    alignas(void*) char m_firstRules[6144];
    alignas(void*) char m_firstMids[18432];
    char m_firstTexts[40448];

    BlockMemory m_rules{m_firstRules, sizeof m_firstRules}; // AnsweredRule, one piece
    BlockMemory m_mids{m_firstMids, sizeof m_firstMids};    // std::string_view, a piece for each rule
    BlockMemory m_texts{m_firstTexts, sizeof m_firstTexts}; // a piece for each text
};
