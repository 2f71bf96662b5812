#include "mordRev/src/queryAnswer.h"

#include <cstring>

#include "mordRev/src/json.h"

std::string DotAnswer::Copy() const {
    return {m_text, std::strlen(m_text)};
}

namespace {

// Capacity for the answer of a usual event; larger answers grow from there.
constexpr size_t firstRules = 8;
constexpr size_t firstMids = 64;

// Collects the rules while the parser reads the answer. A rapidjson::Document with every value would cost more than the
// rest of the decision.
class AnswerHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, AnswerHandler> {
public:
    explicit AnswerHandler(QueryAnswer& answer) : m_answer(answer) {}

    bool Default() { return TakeNumber({}); } // null, a boolean, a fraction, a string
    bool Int(int number) { return TakeNumber(number); }
    bool Uint(unsigned number) { return JsonValue(number).IsInt() ? TakeNumber(number) : Default(); }
    bool Int64(int64_t) { return Default(); } // only for numbers that need more than 32 bits
    bool Uint64(uint64_t) { return Default(); }

    bool StartObject() {
        if (m_depth == 0) {
            m_rootIsObject = true;
        } else if (m_next == Next::mids) {
            m_answer.rules.back().mids = {m_answer.mids.size(), 0};
            m_inMids = true;
        }
        return Open();
    }

    bool EndObject(rapidjson::SizeType) {
        if (m_depth == midDepth && m_inMids) {
            AnsweredRule::Mids& mids = *m_answer.rules.back().mids;
            mids.count = m_answer.mids.size() - mids.first;
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
                m_answer.mids.push_back(name);
            }
        } else if (m_rootIsObject && m_depth == rootDepth) {
            m_answer.rules.push_back({name});
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

    bool TakeNumber(std::optional<int64_t> number) {
        if (m_next == Next::value && number) {
            m_answer.rules.back().value = *number == 0 ? AnsweredRule::Value::zero : AnsweredRule::Value::good;
        }
        m_next = Next::other;
        return true;
    }

    bool Open() {
        m_next = Next::other;
        ++m_depth;
        return true;
    }

    bool Close() {
        --m_depth;
        return true;
    }

    QueryAnswer& m_answer;
    size_t m_depth = 0; // open containers
    Next m_next = Next::other;
    bool m_rootIsObject = false;
    bool m_inMids = false;
    Seen m_seen;
};

} // namespace

bool QueryAnswer::Read() {
    rules.reserve(firstRules);
    mids.reserve(firstMids);
    AnswerHandler handler(*this);
    return !ReadJsonInPlace(text.data(), text.size(), handler).IsError();
}
