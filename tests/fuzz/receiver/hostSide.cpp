#include "fuzz/receiver/hostSide.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <memory>

#include "fuzz/receiver/inputRecord.h"
#include "fuzz/receiver/vocabulary.h"
#include "fuzz/require.h"

namespace {

void SetText(IMordRev& receiver, uint32_t key, const char* text) {
    std::vector<char> copy = Copy(text);
    receiver.SetProperty(key, copy.data(), static_cast<uint32_t>(copy.size()));
}

} // namespace

std::vector<char> Copy(std::string_view text) {
    std::vector<char> copy(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.begin());
    return copy;
}

void SetMode(IMordRev& receiver, PropertyKey key, uint32_t mode) {
    static auto* const place = new uint32_t;
    *place = mode;
    receiver.SetProperty(key, place, sizeof *place);
}

HostSide::~HostSide() {
    Begin({}, {nullptr, 0});
}

void HostSide::Begin(const HostScript& script, const FuzzInput& input) {
    for (char* const answer : m_answers) {
        delete[] answer; // all-forbid mode never gives it back
    }
    m_answers.clear();
    m_script = script;
    m_input = script.repeatsRecords ? input.Repeated() : input;
    m_calls.clear();
    m_depth = 0;
}

void HostSide::HandleEvent(uint32_t ruleCount) {
    InputRecord event(*this, "e");
    std::deque<InputRecord> rules;
    // On the heap and of the exact size, so that AddressSanitizer finds a read of one rule too many and a write beside
    // the reply.
    const auto pointers = std::make_unique<IEventRecord*[]>(ruleCount);
    for (uint32_t i = 0; i < ruleCount; ++i) {
        pointers[i] = &rules.emplace_back(*this, std::to_string(i));
    }
    const auto reply = std::make_unique<uint32_t>(0xDEADBEEF);
    const bool result = m_receiver.HandleEvent(&event, pointers.get(), ruleCount, reply.get());
    Require(*reply <= REPLY_ALLOW_FLAGGED, "a reply is 0, 1 or 2");
    Log(result ? "+" : "-", *reply);
}

int32_t HostSide::QueryDot(const char* guidJson, const char* mid, char** result) {
    Log("Q", guidJson);
    Log("m", mid);
    Require(*result == nullptr, "an answer is null before the query");
    Act(m_script.actOnQuery);
    if (m_script.hasAnswer) {
        // In a buffer of its exact size, so that AddressSanitizer finds a read past the NUL.
        const size_t length = std::strlen(m_script.answer.c_str());
        char* const answer = new char[length + 1];
        std::copy_n(m_script.answer.c_str(), length + 1, answer);
        m_answers.push_back(answer);
        *result = answer;
    }
    return m_script.queryCode;
}

int32_t HostSide::DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) {
    Log("D", guid);
    Log("m", mid);
    Log("k", kind);
    Log("t", type);
    Act(m_script.actOnDelete);
    return m_script.deleteResult;
}

int32_t HostSide::FreeResult(char* result) {
    const auto answer = std::find(m_answers.begin(), m_answers.end(), result);
    Require(result == nullptr || answer != m_answers.end(), "the receiver gives back an answer that it got");
    Log("F", answer - m_answers.begin());
    if (result != nullptr) {
        m_answers.erase(answer);
        delete[] result;
    }
    Act(m_script.actOnFree);
    return m_script.otherResult;
}

int32_t HostSide::Report(int32_t kind, const char* text, uint32_t size) {
    Require(std::strlen(text) == size, "a report has the size that is passed");
    Log("k", kind);
    Log("R", text);
    Act(m_script.actOnReport);
    return m_script.otherResult;
}

void HostSide::Act(uint8_t action) {
    if (action == 0 || m_depth > 0) {
        return;
    }
    ++m_depth;
    const auto setMode = [this](PropertyKey key, uint32_t mode) { SetMode(m_receiver, key, mode); };
    switch (action % 14) {
    case 1:
        m_receiver.SetAllowList(knownAllowList);
        break;
    case 2:
        m_receiver.SetAllowList(R"({"mid_list":[{"mid":"X","protocol":["K","web",""]}]})");
        break;
    case 3:
        m_receiver.SetAllowList("{\"mid_list\":[");
        break;
    case 4:
        m_receiver.ClearAllowList();
        break;
    case 5:
        SetText(m_receiver, PROP_ACTION_JSON, R"({"G":1,"K":1,"web":-1})");
        break;
    case 6:
        SetText(m_receiver, PROP_ACTION_JSON, "{}");
        break;
    case 7:
        m_receiver.Stop();
        break;
    case 8:
        m_receiver.Start();
        break;
    case 9:
        setMode(PROP_DEFENDER_MODE, MODE_ALL_FORBID);
        break;
    case 10:
        setMode(PROP_DEFENDER_MODE, MODE_ALLOW_AFTER_DECISION);
        break;
    case 11:
        setMode(PROP_DEFENDER_MODE, MODE_EMERGENCY);
        break;
    case 12:
        setMode(PROP_EXCEPTION_MODE, EXCEPTION_ALLOW);
        break;
    case 13:
        HandleEvent(2);
        break;
    default:
        m_receiver.Uninit();
        m_receiver.Init(this);
        break;
    }
    --m_depth;
}

void HostSide::Log(std::string_view what, const char* text) {
    m_calls += what;
    m_calls += text;
    m_calls += '\n';
}

void HostSide::Log(std::string_view what, int64_t number) {
    Log(what, std::to_string(number).c_str());
}
