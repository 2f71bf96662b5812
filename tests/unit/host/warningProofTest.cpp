// Each warning of a check is true: the real library decides the same with and without what the warning names.
#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include "document/warningCodes.h"
#include "review/answerCheck.h"
#include "system/inputStream.h"
#include "unit/host/realLibrary.h"

using namespace mordhostTest;

namespace {

// The documents of a proof. `fixed` follows the advice of the warning, and is decided differently, so that the
// comparison of the other two can fail.
struct Proof {
    std::string with;    // the warning is about this
    std::string without; // the same without what has no effect
    std::string fixed;
};

// A policy with a rule A of the type x on port 1 and with the dot of the machine M.
std::string WithAllowList(const std::string& allowList, const std::string& more = "") {
    return R"({"rules": [{"guid": "A", "type": "x", "local_ports": [1]}], "dots": {"A": ["M"]}, "allow_list": )" +
           allowList + more + "}";
}

std::string WithEntries(const std::string& entries) {
    return WithAllowList("{\"mid_list\": [" + entries + "]}");
}

std::string WithActions(const std::string& actions) {
    return R"({"rules": [{"guid": "A", "type": "x", "local_ports": [1]}], "actions": )" + actions + "}";
}

std::string WithDots(const std::string& dots, const std::string& rule = R"("guid": "A", "type": "x")",
                     const std::string& keys = "\"x\"") {
    return "{\"rules\": [{" + rule +
           R"(, "local_ports": [1]}], "allow_list": {"mid_list": [{"mid": "M", "protocol": [)" + keys +
           "]}]}, \"dots\": {" + dots + "}}";
}

std::string WithMode(const std::string& mode) {
    return R"({"rules": [{"guid": "A", "type": "x", "local_ports": [1]}])" + mode + "}";
}

constexpr auto endedMode = R"(, "defender_mode": {"mode": "emergency", "until": "2001-01-01T00:00:00Z"})";
constexpr auto lastingMode = R"(, "defender_mode": {"mode": "emergency", "until": "9999-01-01T00:00:00Z"})";

constexpr auto wideFirst = R"({"rules": [{"guid": "B", "type": "y"}, {"guid": "A", "type": "x", "local_ports": [1]}])";
constexpr auto wideLast = R"({"rules": [{"guid": "A", "type": "x", "local_ports": [1]}, {"guid": "B", "type": "y"}])";

const std::map<std::string, Proof> policyProofs = {
    {"mid-list-not-array",
     {WithAllowList(R"({"mid_list": {"mid": "M", "protocol": ["x"]}})"), WithAllowList(R"({"mid_list": []})"),
      WithAllowList(R"({"mid_list": [{"mid": "M", "protocol": ["x"]}]})")}},
    {"entry-not-object",
     {WithEntries(R"(["M", "x"])"), WithEntries(""), WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"entry-without-mid",
     {WithEntries(R"({"MID": "M", "protocol": ["x"]})"), WithEntries(""),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"mid-not-string",
     {WithEntries(R"({"mid": ["M"], "protocol": ["x"]})"), WithEntries(""),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"entry-without-protocol",
     {WithEntries(R"({"mid": "M", "protocols": ["x"]})"), WithEntries(""),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"protocol-not-array",
     {WithEntries(R"({"mid": "M", "protocol": "x"})"), WithEntries(""),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"key-not-string",
     {WithEntries(R"({"mid": "M", "protocol": [["x"]]})"), WithEntries(R"({"mid": "M", "protocol": []})"),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"repeated-member",
     {WithEntries(R"({"mid": "N", "protocol": ["x"], "mid": "M"})"), WithEntries(R"({"mid": "N", "protocol": ["x"]})"),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"text-after-nul",
     {WithEntries(R"({"mid": "M\u00002", "protocol": ["x\u0000y"]})"),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})"), WithEntries(R"({"mid": "M2", "protocol": ["xy"]})")}},
    {"action-without-type",
     {WithActions(R"({"": 1, "z": 1})"), WithActions(R"({"z": 1})"), WithActions(R"({"x": 1, "z": 1})")}},
    {"action-not-integer",
     {WithActions(R"({"x": 1.0, "z": 1})"), WithActions(R"({"z": 1})"), WithActions(R"({"x": 1, "z": 1})")}},
    {"replaced-action", {WithActions(R"({"x": 1, "x": 0})"), WithActions(R"({"x": 0})"), WithActions(R"({"x": 1})")}},
    {"mode-without-end", {WithMode(R"(, "defender_mode": "emergency")"), WithMode(lastingMode), WithMode(endedMode)}},
    {"mode-ended", {WithMode(endedMode), WithMode(""), WithMode(lastingMode)}},
    // For these two, no machine matches: the dots have no effect. The rule itself has one.
    {"rule-without-machine",
     {WithDots(R"("A": ["M"])", R"("guid": "A", "type": "y")"), WithDots("", R"("guid": "A", "type": "y")"),
      WithDots(R"("A": ["M"])")}},
    {"web-rule-without-key",
     {WithDots(R"("A": ["M"])", R"("guid": "A", "type": "web")", "\"web\""),
      WithDots("", R"("guid": "A", "type": "web")", "\"web\""),
      WithDots(R"("A": ["M"])", R"("guid": "A", "type": "web")", "\"A\"")}},
    {"unused-allow-list-key",
     {WithEntries(R"({"mid": "M", "protocol": ["xx"]})"), WithEntries(R"({"mid": "M", "protocol": []})"),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
    {"duplicate-entry",
     {WithEntries(R"({"mid": "M", "protocol": ["x", "x"]})"), WithEntries(R"({"mid": "M", "protocol": ["x"]})"),
      WithEntries(R"({"mid": "M", "protocol": []})")}},
    {"unused-action", {WithActions(R"({"X": 1, "x": 0})"), WithActions(R"({"x": 0})"), WithActions(R"({"x": 1})")}},
    {"shadowed-action",
     {std::string(wideFirst) + R"(, "actions": {"x": 1, "y": 0}})",
      std::string(wideFirst) + R"(, "actions": {"y": 0}})",
      std::string(wideLast) + R"(, "actions": {"x": 1, "y": 0}})"}},
    {"unknown-dot", {WithDots(R"("B": ["M"])"), WithDots(""), WithDots(R"("A": ["M"])")}},
    {"duplicate-machine", {WithDots(R"("A": ["M", "M"])"), WithDots(R"("A": ["M"])"), WithDots("")}},
    {"similar-id",
     {WithEntries(R"({"mid": "m ", "protocol": ["x"]})"), WithEntries(""),
      WithEntries(R"({"mid": "M", "protocol": ["x"]})")}},
};

const std::map<std::string, Proof> answerProofs = {
    {"answer-not-object", {"[{\"A\": 1}]", "{}", R"({"A": {"value": 1, "mid": {"M": 1}}})"}},
    {"answer-value-malformed",
     {R"({"A": {"value": 1.0, "mid": {"M": 1}}, "B": {"value": 1, "mid": {"M": 1}}})", "{}",
      R"({"A": {"value": 1, "mid": {"M": 1}}, "B": {"value": 1, "mid": {"M": 1}}})"}},
    {"answer-mid-malformed",
     {R"({"A": {"value": 1, "mid": ["M"]}, "B": {"value": 1, "mid": {"M": 1}}})", "{}",
      R"({"A": {"value": 1, "mid": {"M": 1}}, "B": {"value": 1, "mid": {"M": 1}}})"}},
    {"answer-value-zero",
     {R"({"A": {"value": 0, "mid": {"M": 1}}, "B": {"value": 1, "mid": {"M": 1}}})",
      R"({"B": {"value": 1, "mid": {"M": 1}}})",
      R"({"A": {"value": 1, "mid": {"M": 1}}, "B": {"value": 1, "mid": {"M": 1}}})"}},
    {"answer-repeated-guid",
     {R"({"A": {"value": 1, "mid": {}}, "A": {"value": 1, "mid": {"M": 1}}})", R"({"A": {"value": 1, "mid": {}}})",
      R"({"A": {"value": 1, "mid": {"M": 1}}})"}},
};

std::vector<std::string> CodesOfAnswer(const std::string& text) {
    const mordhost::JsonDocument document(mordhost::SourceText("a.json", text));
    mordhost::Findings findings;
    mordhost::CheckAnswer(document, findings);
    std::vector<std::string> codes;
    for (const mordhost::Finding& finding : findings.InOrder()) {
        codes.push_back(finding.code);
    }
    return codes;
}

bool Has(const std::vector<std::string>& codes, const std::string& code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

} // namespace

TEST(WarningProof, EachWarningOfAPolicyIsTrue) {
    for (const auto& [code, proof] : policyProofs) {
        EXPECT_TRUE(Has(CodesOf(proof.with), code)) << code;
        EXPECT_FALSE(Has(CodesOf(proof.fixed), code)) << code;
        const std::string decisions = DecisionsOf(proof.with);
        EXPECT_EQ(decisions, DecisionsOf(proof.without)) << code << " names something that has an effect";
        EXPECT_NE(decisions, DecisionsOf(proof.fixed)) << code << ": the comparison shows nothing";
    }
}

TEST(WarningProof, EachWarningOfAnAnswerIsTrue) {
    for (const auto& [code, proof] : answerProofs) {
        EXPECT_TRUE(Has(CodesOfAnswer(proof.with), code)) << code;
        EXPECT_FALSE(Has(CodesOfAnswer(proof.fixed), code)) << code;
        const std::string decisions = DecisionsForAnswer(proof.with);
        EXPECT_EQ(decisions, DecisionsForAnswer(proof.without)) << code << " names something that has an effect";
        EXPECT_NE(decisions, DecisionsForAnswer(proof.fixed)) << code << ": the comparison shows nothing";
    }
}

TEST(WarningProof, EveryCodeIsDocumented) {
    const std::string page = mordhost::InputStream(MORDHOST_SOURCE_DIRECTORY "/docs/mordhost.md").ReadAll();
    for (const std::string_view code : mordhost::warningCodes) {
        EXPECT_NE(page.find('`' + std::string(code) + '`'), std::string::npos) << code;
    }
}

TEST(WarningProof, EveryCodeHasAProof) {
    for (const std::string_view code : mordhost::warningCodes) {
        EXPECT_EQ(policyProofs.count(std::string(code)) + answerProofs.count(std::string(code)), 1U) << code;
    }
    EXPECT_EQ(policyProofs.size() + answerProofs.size(), mordhost::warningCodes.size());
}
