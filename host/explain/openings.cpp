#include "explain/openings.h"

#include <algorithm>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "frame/values.h"
#include "policy/memoryDotStore.h"
#include "policy/modeNames.h"
#include "policy/wholePolicy.h"

namespace mordhost {

namespace {

constexpr size_t triedMachines = 3; // of each rule

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

// Changes a document of the library: passes its JSON to `change` and stores the result.
template <typename Change>
void ChangeDocument(std::optional<LibraryDocument>& document, Change change) {
    rapidjson::Document json;
    json.Parse<rapidjson::kParseIterativeFlag>(document ? document->text.c_str() : "{}");
    if (!json.IsObject()) {
        json.SetObject();
    }
    change(json, json.GetAllocator());
    rapidjson::StringBuffer text;
    rapidjson::Writer writer(text);
    json.Accept(writer);
    document = LibraryDocument{text.GetString(), {}};
}

rapidjson::Value TextValue(const std::string& text, rapidjson::Document::AllocatorType& allocator) {
    return rapidjson::Value(text.data(), static_cast<rapidjson::SizeType>(text.size()), allocator);
}

void AllowMachine(Policy& policy, const std::string& machine, const std::string& key) {
    ChangeDocument(policy.allowList, [&](rapidjson::Document& json, auto& allocator) {
        rapidjson::Value entry(rapidjson::kObjectType);
        entry.AddMember("mid", TextValue(machine, allocator), allocator);
        rapidjson::Value keys(rapidjson::kArrayType);
        keys.PushBack(TextValue(key, allocator), allocator);
        entry.AddMember("protocol", keys, allocator);
        const auto list = json.FindMember("mid_list");
        if (list != json.MemberEnd() && list->value.IsArray()) {
            list->value.PushBack(entry, allocator);
            return;
        }
        json.SetObject();
        rapidjson::Value machines(rapidjson::kArrayType);
        machines.PushBack(entry, allocator);
        json.AddMember("mid_list", machines, allocator);
    });
}

void LetTypePass(Policy& policy, const std::string& type) {
    ChangeDocument(policy.actions, [&](rapidjson::Document& json, auto& allocator) {
        json.AddMember(TextValue(type, allocator), rapidjson::Value(1), allocator); // the last row of a type counts
    });
}

class Trials {
public:
    Trials(const Policy& policy, const Explanation& explanation, const DotTable& dots, const SessionOptions& options)
        : m_policy(policy), m_explanation(explanation), m_dots(dots), m_options(options) {}

    void OfRule(const RuleExplanation& explained) {
        const Rule& rule = m_policy.rules[explained.rule];
        size_t tried = 0;
        for (const std::string& machine : explained.held) {
            const bool isAllowed = std::any_of(explained.both.begin(), explained.both.end(),
                                               [&machine](const auto* entry) { return entry->mid == machine; });
            if (!isAllowed && tried++ < triedMachines) {
                Try("allow the machine " + Quoted(machine) + " under the key " + Quoted(explained.key),
                    PlaceOf(explained), [&](Policy& policy) { AllowMachine(policy, machine, explained.key); });
            }
        }
        for (size_t i = 0; explained.held.empty() && i < std::min(explained.allowed->size(), triedMachines); ++i) {
            const AllowListEntry& entry = *(*explained.allowed)[i];
            Try("issue a dot of the machine " + Quoted(entry.mid) + " for the rule " + Quoted(rule.guid),
                entry.keyPlace, [&](Policy& policy) { policy.dots[rule.guid].insert(entry.mid); });
        }
    }

    void OfEvent() {
        const Decision& decision = *m_explanation.decision;
        if (decision.failure) {
            Try("let the query for dots succeed", std::nullopt, [&](Policy& policy) {
                policy.failures.erase(decision.event.name);
                m_options.dotsDown.reset();
            });
            m_options.dotsDown = m_dotsDown;
        }
        if (decision.failure == Failure::networkError && m_explanation.exceptionMode != EXCEPTION_ALLOW) {
            Try("set the exception mode \"allow\"", Copy(m_explanation.exceptionModePlace),
                [](Policy& policy) { policy.exceptionMode = EXCEPTION_ALLOW; });
        }
        if (m_explanation.defenderMode == MODE_ACTION_TABLE) {
            const std::string& type = m_policy.rules[decision.rules.front()].type;
            Try("set the action of type " + Quoted(type) + " to 1",
                m_explanation.action == nullptr ? std::nullopt : std::optional(m_explanation.action->place),
                [&](Policy& policy) { LetTypePass(policy, type); });
        }
        for (const NamedValue& mode : defenderModes) {
            if (mode.value != m_explanation.defenderMode) {
                Try("set the defender mode \"" + std::string(mode.name) + '"', Copy(m_explanation.defenderModePlace),
                    [&](Policy& policy) {
                        policy.defenderMode = mode.value;
                        policy.defenderModeEnd.reset();
                    });
            }
        }
    }

    std::vector<Opening> openings;

private:
    static std::optional<DocumentPlace> Copy(const DocumentPlace* place) {
        return place == nullptr ? std::nullopt : std::optional(*place);
    }

    static std::optional<DocumentPlace> PlaceOf(const RuleExplanation& explained) {
        return explained.allowed->empty() ? std::nullopt : std::optional(explained.allowed->front()->keyPlace);
    }

    template <typename Change>
    void Try(const std::string& text, std::optional<DocumentPlace> place, Change change) {
        Policy changed = SettingEverything(m_policy);
        changed.dots = m_dots;
        change(changed);
        MemoryDotStore store(changed.dots);
        DecisionSession session(changed, store, m_options);
        const Decision& decision = session.Decide(ConnectionEvent(m_explanation.decision->event));
        if (decision.asked && decision.reply != REPLY_BLOCK) {
            openings.push_back({text, VerdictOf(decision), std::move(place)});
        }
    }

    const Policy& m_policy;
    const Explanation& m_explanation;
    const DotTable& m_dots;
    SessionOptions m_options;
    const std::optional<Failure> m_dotsDown = m_options.dotsDown;
};

} // namespace

std::vector<Opening> FindOpenings(const Policy& policy, const Explanation& explanation, const DotTable& dots,
                                  const SessionOptions& options) {
    Trials trials(policy, explanation, dots, options);
    if (explanation.decision->asked) {
        for (const RuleExplanation& rule : explanation.rules) {
            trials.OfRule(rule);
        }
        trials.OfEvent();
    }
    return std::move(trials.openings);
}

} // namespace mordhost
