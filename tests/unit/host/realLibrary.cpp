#include "unit/host/realLibrary.h"

#include <cstring>

#include <gtest/gtest.h>

#include "decide/decisionSession.h"
#include "frame/values.h"
#include "policy/memoryDotStore.h"
#include "review/documentCheck.h"

using namespace mordhost;

namespace mordhostTest {

namespace {

// Gives the same answer to every query.
class FixedAnswer final : public IDotHost {
public:
    explicit FixedAnswer(std::string text) : m_text(std::move(text)) {}

    int32_t DeleteDot(const char* guid, const char*, int32_t, const char*) override {
        deleted = guid;
        return 0;
    }
    int32_t QueryDot(const char*, const char*, char** result) override {
        *result = m_text.data();
        return DOT_QUERY_ANSWERED;
    }
    int32_t FreeResult(char*) override { return 0; }

    std::string deleted;

private:
    std::string m_text;
};

// Keeps the dots that are deleted, so that no decision changes a later one.
class KeptDots final : public DotStore {
public:
    explicit KeptDots(const DotTable& dots) : m_dots(dots), m_store(dots) {}

    Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) override {
        return m_store.Find(guids, dots);
    }
    bool Delete(const std::string& guid) noexcept override { return m_dots.contains(guid); }
    size_t Size() const override { return m_dots.size(); }
    const std::string& Trouble() const override { return m_store.Trouble(); }

private:
    DotTable m_dots;
    MemoryDotStore m_store;
};

ConnectionEvent OnPort(uint16_t port) {
    ConnectionEvent event;
    event.localPort = port;
    event.localAddress = "192.0.2.1";
    event.remoteAddress = "192.0.2.12";
    return event;
}

constexpr auto answerPolicy = R"({"rules": [{"guid": "A", "type": "a"}, {"guid": "B", "type": "b"},
    {"guid": "C", "type": "c"}], "allow_list": {"mid_list": [{"mid": "M", "protocol": ["a", "b", "c"]}]}})";

} // namespace

PolicyReading ReadingOf(const std::string& policy) {
    return ReadWholePolicy(SourceText("p.json", policy));
}

std::vector<std::string> CodesOf(const std::string& policy) {
    Findings findings = CheckDocument(SourceText("p.json", policy), DocumentKind::policy, MORDHOST_LIBRARY_DIRECTORY);
    std::vector<std::string> codes;
    for (const Finding& finding : findings.InOrder()) {
        codes.push_back(finding.code);
        EXPECT_NE(finding.code, "library-refuses") << policy;
    }
    return codes;
}

std::string DecisionsOf(const std::string& policy) {
    PolicyReading reading = ReadingOf(policy);
    EXPECT_EQ(reading.findings.Errors(), 0U) << policy;
    // The library keeps what the policy before has set.
    if (!reading.policy.allowList) {
        reading.policy.allowList = LibraryDocument{R"({"mid_list": []})", {}};
    }
    if (!reading.policy.actions) {
        reading.policy.actions = LibraryDocument{R"({"of no rule": 0})", {}};
    }
    if (!reading.policy.defenderMode) {
        reading.policy.defenderMode = MODE_ACTION_TABLE;
    }
    KeptDots store(reading.policy.dots);
    SessionOptions options;
    options.libraries = MORDHOST_LIBRARY_DIRECTORY;
    options.logging = false;
    DecisionSession session(reading.policy, store, options);
    std::string decisions;
    for (uint16_t port = 1; port <= 9; ++port) {
        const Decision& decision = session.Decide(OnPort(port));
        decisions += std::to_string(port) + ' ' + VerdictOf(decision);
        decisions += HasDeletedDot(decision) ? ' ' + decision.deletion->guid + '\n' : " -\n";
    }
    return decisions;
}

std::string DecisionsForAnswer(const std::string& answer) {
    const PolicyReading reading = ReadingOf(answerPolicy);
    const Libraries libraries(MORDHOST_LIBRARY_DIRECTORY);
    FixedAnswer host(answer);
    ReportSink sink;
    Receiver receiver(libraries.Receiver(), reading.policy, host, sink);
    std::string decisions;
    for (size_t rule = 0; rule < reading.policy.rules.size(); ++rule) {
        decisions += std::to_string(receiver.Decide(OnPort(1), {rule}).reply);
    }
    return decisions;
}

} // namespace mordhostTest
