#include "model/smallScope.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "model/operations.h"
#include "model/session.h"
#include "model/watch.h"

namespace model {
namespace {

using Texts = std::vector<std::string>;

constexpr uint32_t shown = 5;
constexpr uint32_t queryResults = 3;
const Texts typeWords = {"web", "dns", "ssh", "ftp"};
const Texts malformedAnswers = {"", "{", "[]"};

// The entry of one rule in an answer; empty if there is none.
const Texts ruleAnswers = {"",
                           R"({"mid":{"m2":1}})",
                           R"({"value":0,"mid":{"m2":1}})",
                           R"({"value":"1","mid":{"m2":1}})",
                           R"({"value":1})",
                           R"({"value":1,"mid":{}})",
                           R"({"value":1,"mid":{"m2":1}})",
                           R"({"value":1,"mid":{"m1":1,"m2":1}})"};

std::string GuidOf(size_t rule) {
    return "g" + std::to_string(rule);
}

// Each type is 0 for "web" or one of the other words, which are taken in the order of their first use.
void AddPatterns(uint32_t rules, std::vector<uint32_t>& types, uint32_t words, std::vector<Texts>& patterns) {
    if (types.size() == rules) {
        Texts& pattern = patterns.emplace_back();
        for (const uint32_t type : types) {
            pattern.push_back(typeWords[type]);
        }
        return;
    }
    for (uint32_t type = 0; type <= words + 1; ++type) {
        types.push_back(type);
        AddPatterns(rules, types, std::max(words, type), patterns);
        types.pop_back();
    }
}

// The allow lists for the rules; the first is empty.
Texts ListsFor(const Texts& types) {
    Texts keys;
    for (size_t rule = 0; rule < types.size(); ++rule) {
        const std::string key = types[rule] == "web" ? GuidOf(rule) : types[rule];
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            keys.push_back(key);
        }
    }
    Texts lists = {R"({"mid_list":[]})"};
    uint32_t count = 1;
    for (size_t i = 0; i < keys.size(); ++i) {
        count *= 3;
    }
    for (uint32_t number = 0; number < count; ++number) {
        std::string list = R"({"mid_list":[{"mid":"m2","protocol":["none"]})";
        uint32_t rest = number;
        for (const std::string& key : keys) {
            if (rest % 3 != 0) {
                list +=
                    std::string(R"(,{"mid":")") + (rest % 3 == 1 ? "m9" : "m2") + R"(","protocol":[")" + key + R"("]})";
            }
            rest /= 3;
        }
        lists.push_back(list + "]}");
    }
    return lists;
}

// `action` is 0 or 1 for the row of the first type, or 2 for none.
std::string ActionsFor(const Texts& types, uint32_t action) {
    std::string document = R"({"none":1)";
    for (size_t rule = 0; rule < types.size(); ++rule) {
        const bool isFirst = types[rule] == types[0];
        if (std::find(types.begin(), types.end(), types[rule]) - types.begin() != static_cast<std::ptrdiff_t>(rule) ||
            (isFirst && action == 2)) {
            continue;
        }
        document += ",\"" + types[rule] + "\":" + ((isFirst ? action == 1 : action != 1) ? "1" : "0");
    }
    return document + "}";
}

Texts AnswersFor(uint32_t rules) {
    Texts answers = malformedAnswers;
    uint32_t count = 1;
    for (uint32_t i = 0; i < rules; ++i) {
        count *= static_cast<uint32_t>(ruleAnswers.size());
    }
    for (uint32_t number = 0; number < count; ++number) {
        std::string answer;
        uint32_t rest = number;
        for (uint32_t rule = 0; rule < rules; ++rule) {
            const std::string& said = ruleAnswers[rest % ruleAnswers.size()];
            rest /= static_cast<uint32_t>(ruleAnswers.size());
            if (!said.empty()) {
                answer += (answer.empty() ? "\"" : ",\"") + GuidOf(rule) + "\":" + said;
            }
        }
        answers.push_back("{" + answer + "}");
    }
    return answers;
}

class SmallScope {
public:
    SmallScope(uint32_t rules, BranchCounts& branches, std::ostream& out)
        : m_session(branches), m_out(out), m_answers(AnswersFor(rules)) {
        m_setting.siblings.writesLog = false;
        m_event.siblings.writesLog = false;
        Set(InitOf(0));
    }

    void RunPattern(const Texts& types, const std::string& list) {
        std::vector<RecordScript> rules;
        for (size_t rule = 0; rule < types.size(); ++rule) {
            rules.push_back(RuleRecord(GuidOf(rule), types[rule]));
        }
        m_event.operations = {HandlingOf(EventOf(0, rules, ""))};
        Set(AllowListOf(list));
        for (const uint32_t action : {0U, 1U, 2U}) {
            Set(TextOf(20, ActionsFor(types, action)));
            for (const bool started : {false, true}) {
                Set(started ? StartOf() : StopOf());
                for (const uint32_t sink : {0U, 2U}) {
                    Set(SinkOf(sink));
                    for (const uint32_t exceptionMode : {1U, 2U, 3U}) {
                        Set(NumberOf(9, exceptionMode));
                        RunModes();
                    }
                }
            }
        }
    }

    const ScopeCounts& Counts() const { return m_counts; }

private:
    EventScript& Event() { return m_event.operations[0].event[0]; }

    void Set(Operation operation) {
        m_setting.operations = {std::move(operation)};
        Judge(m_session.Run(m_setting));
    }

    void RunModes() {
        const uint64_t answers = m_answers.size() + 1; // with null
        for (const uint32_t mode : {1U, 2U, 3U, 4U, 5U}) {
            Set(NumberOf(8, mode));
            for (const int32_t flags : {0, 4, 0x10, 0x14}) {
                Event().event.numbers["flags"].value = flags;
                if (mode == 5 || (flags & 4) != 0) {
                    RunEvent(0, nullptr, true, queryResults * answers, 0);
                    continue;
                }
                for (const int32_t result : {0, 1007, 1}) {
                    RunEvent(result, nullptr, false, 1, 1);
                    if (result != 0 || mode == 1) {
                        RunEvent(result, nullptr, true, answers - 1, 1);
                        continue;
                    }
                    for (const std::string& answer : m_answers) {
                        RunEvent(result, &answer, false, 1, 1);
                    }
                }
            }
        }
    }

    // An event with this result and answer of the query. It covers `combinations` and must make `queries`.
    void RunEvent(int32_t result, const std::string* answer, bool unreadable, uint64_t combinations, uint64_t queries) {
        EventScript& event = Event();
        event.queryResult = result;
        event.unreadableAnswer = unreadable;
        if (answer != nullptr) {
            event.answer = *answer;
        } else {
            event.answer.reset();
        }
        const uint64_t before = m_session.Queries();
        WatchCase(++m_counts.runs);
        m_counts.combinations += combinations;
        Judge(m_session.Run(m_event));
        if (m_session.Queries() - before != queries) {
            Judge("  QueryDot called " + std::to_string(m_session.Queries() - before) + " times\n");
        }
    }

    void Judge(const std::string& difference) {
        if (!difference.empty() && ++m_counts.differences <= shown) {
            m_session.SetVerbose();
            m_out << "run " << m_counts.runs << "\n" << difference << m_session.Run(m_event) << std::flush;
        }
    }

    Session m_session;
    std::ostream& m_out;
    Texts m_answers;
    TestCase m_setting;
    TestCase m_event;
    ScopeCounts m_counts;
};

} // namespace

ScopeCounts RunSmallScope(uint32_t rules, uint32_t share, uint32_t shares, BranchCounts& branches, std::ostream& out) {
    StartWatch("the scope of " + std::to_string(rules) + " rules, share " + std::to_string(share));
    std::vector<Texts> patterns;
    std::vector<uint32_t> types;
    AddPatterns(rules, types, 0, patterns);
    SmallScope scope(rules, branches, out);
    uint32_t number = 0;
    for (const Texts& pattern : patterns) {
        for (const std::string& list : ListsFor(pattern)) {
            if (number++ % shares == share) {
                scope.RunPattern(pattern, list);
            }
        }
    }
    return scope.Counts();
}

} // namespace model
