#include "compare/localSide.h"

#include <algorithm>

#include "output/jsonText.h"
#include "output/placeMembers.h"

namespace mordhost {

namespace {

// The value of the policy, besides rules and allow list, that the reason refers to.
struct Setting {
    std::string_view what;
    const DocumentPlace* place = nullptr;
};

Setting SettingOf(const Decision& decision, const Policy& policy) {
    switch (decision.reason.code) {
    case ReasonCode::actionTable: {
        const std::string& type = policy.rules[decision.rules.front()].type;
        const auto row = std::find_if(policy.actionRows.rbegin(), policy.actionRows.rend(),
                                      [&](const ActionRow& other) { return other.type == type; });
        return {"action table", row == policy.actionRows.rend() ? nullptr : &row->place};
    }
    case ReasonCode::allForbidMode:
    case ReasonCode::emergencyMode:
    case ReasonCode::afterDecisionMode:
        return {"defender mode", &policy.defenderModePlace};
    default:
        return {};
    }
}

std::string SettingText(const Setting& setting) {
    if (setting.place == nullptr || setting.place->where.file.empty()) {
        return "null";
    }
    std::string text = "{";
    JsonMembers members(text);
    members.Text("what", setting.what);
    AppendPlace(members, *setting.place);
    return text + '}';
}

} // namespace

LocalSide::LocalSide(const Policy& policy, const std::filesystem::path& libraries, const std::string& hostVersion)
    : m_policy(policy), m_store(policy.dots), m_session(policy, m_store, {libraries, true, std::nullopt, UtcNow}),
      m_records(policy, {m_session.LibraryVersion(), hostVersion, false}) {}

const std::vector<Brief>& LocalSide::Finish() {
    m_briefs.resize(m_batch->count);
    m_decisions.resize(std::max(m_decisions.size(), m_batch->count));
    for (size_t i = 0; i < m_batch->count; ++i) {
        m_event = m_batch->events[i];
        const Decision& decision = m_session.Decide(std::move(m_event));
        Shorten(decision, m_briefs[i]);
        Keep(i, decision);
        m_session.DropKeptAnswers();
    }
    return m_briefs;
}

void LocalSide::Keep(size_t index, const Decision& decision) {
    Decision& kept = m_decisions[index];
    kept.rules = decision.rules;
    kept.asked = decision.asked;
    kept.reply = decision.reply;
    kept.settled = decision.settled;
    kept.reason = decision.reason;
    kept.reports.resize(decision.reports.size()); // the record has their number
    kept.deletion = decision.deletion;
    kept.failure = decision.failure;
    kept.process = decision.process;
}

const std::vector<Detail>& LocalSide::Details(const std::vector<size_t>& wanted) {
    m_details.resize(wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i) {
        Decision& decision = m_decisions.at(wanted[i]);
        decision.event = m_batch->events[wanted[i]];
        m_details[i].record.clear();
        m_records.Append(m_details[i].record, decision);
        m_details[i].setting = SettingText(SettingOf(decision, m_policy));
        m_details[i].missing.clear();
        for (const RuleOutcome& outcome : decision.reason.rules) {
            if (outcome.code == ReasonCode::noDot) {
                m_details[i].missing.push_back(m_policy.rules[outcome.rule].guid);
            }
        }
    }
    return m_details;
}

} // namespace mordhost
