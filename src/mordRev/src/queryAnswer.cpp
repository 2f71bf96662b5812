#include "mordRev/src/queryAnswer.h"

#include <cstring>

#include "mordRev/src/answerText.h"
#include "mordRev/src/json.h"

std::string_view DotAnswer::View() const {
    return {m_text, std::strlen(m_text)};
}

namespace {

// An answer has three levels. Deeper ones are within values that do not count.
constexpr size_t usualLevels = 8;

// Collects the rules while the parser reads the answer. A rapidjson::Document with every value would cost more than the
// rest of the decision.
class AnswerHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, AnswerHandler> {
public:
    // Refuses an object or array within `mostLevels` others.
    AnswerHandler(BlockMemory& rules, BlockMemory& mids, size_t mostLevels)
        : m_rules(rules), m_mids(mids), m_mostLevels(mostLevels) {}

    // Whether one was refused.
    bool WasTooDeep() const { return m_depth > m_mostLevels; }

    bool Default() { return TakeNumber({}); } // null, a boolean, a fraction, a string
    bool Int(int number) { return TakeNumber(number); }
    bool Uint(unsigned number) { return JsonValue(number).IsInt() ? TakeNumber(number) : Default(); }
    bool Int64(int64_t) { return Default(); } // only for numbers that need more than 32 bits
    bool Uint64(uint64_t) { return Default(); }

    bool StartObject() {
        if (m_depth == 0) {
            m_rootIsObject = true;
        } else if (m_next == Next::mids) {
            m_inMids = true;
        }
        return Open();
    }

    bool EndObject(rapidjson::SizeType) {
        if (m_depth == midDepth && m_inMids) {
            LastRule().mids = ItemsOf<std::string_view>(m_mids);
            m_mids.Close();
            m_inMids = false;
        }
        return Close();
    }

    bool StartArray() { return Open(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

    bool Key(const char* text, rapidjson::SizeType length, bool) {
        const std::string_view name(text, length);
        if (m_depth == midDepth) {
            if (m_inMids) {
                AddItem(m_mids, name);
            }
        } else if (m_rootIsObject && m_depth == rootDepth) {
            AddItem(m_rules, AnsweredRule{name});
            m_seen = {};
        } else if (m_rootIsObject && m_depth == ruleDepth) {
            if (name == "value" && !m_seen.value) {
                m_seen.value = true;
                m_next = Next::value;
            } else if (name == "mid" && !m_seen.mids) {
                m_seen.mids = true;
                m_next = Next::mids;
            }
        }
        return true;
    }

private:
    // The role of the next value.
    enum class Next { other, value, mids };

    // The members seen in the current rule: of several with the same name the first counts.
    struct Seen {
        bool value = false;
        bool mids = false;
    };

    // The number of open containers at the member names of the root, of a rule and of "mid".
    static constexpr size_t rootDepth = 1;
    static constexpr size_t ruleDepth = 2;
    static constexpr size_t midDepth = 3;

    AnsweredRule& LastRule() { return ItemsOf<AnsweredRule>(m_rules).back(); }

    bool TakeNumber(std::optional<int64_t> number) {
        if (m_next == Next::value && number) {
            LastRule().value = *number == 0 ? AnsweredRule::Value::zero : AnsweredRule::Value::good;
        }
        m_next = Next::other;
        return true;
    }

    bool Open() {
        m_next = Next::other;
        return ++m_depth <= m_mostLevels;
    }

    bool Close() {
        --m_depth;
        return true;
    }

    BlockMemory& m_rules;
    BlockMemory& m_mids; // the open piece holds the ids of the last rule
    const size_t m_mostLevels;
    size_t m_depth = 0; // open containers
    Next m_next = Next::other;
    bool m_rootIsObject = false;
    bool m_inMids = false;
    Seen m_seen;
};

} // namespace

bool QueryAnswer::Read(std::string_view text) {
    {
        AnswerHandler handler(m_rules, m_mids, usualLevels);
        AnswerText stream(text, m_texts);
        const bool isError = ReadShallowJson(stream, handler).IsError();
        if (!handler.WasTooDeep()) {
            return !isError;
        }
    }
    m_rules.Clear();
    m_mids.Clear();
    m_texts.Clear();
    AnswerHandler handler(m_rules, m_mids, static_cast<size_t>(-1));
    AnswerText stream(text, m_texts);
    return !ReadJson(stream, handler).IsError();
}
