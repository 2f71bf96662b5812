// A reference receiver: the required behaviour, step by step, without any optimisation. It shares only the headers of
// the interfaces with the library and has its own JSON reader and writer.
//
// It serves one thread, takes no lock, and logs into a Trace.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/interfaces.h"
#include "model/branches.h"
#include "model/siblingState.h"
#include "model/trace.h"

namespace model {

// Unsigned bytes over the common length, then the shorter first.
struct TextOrder {
    bool operator()(const std::string& left, const std::string& right) const;
};
using TextSet = std::set<std::string, TextOrder>;

class ReceiverModel final : public IMordRev {
public:
    // All three must outlive the model; `siblings` may change between two calls.
    ReceiverModel(Trace& trace, const SiblingState& siblings, BranchCounts& branches)
        : m_trace(trace), m_siblings(siblings), m_branches(branches) {}

    int32_t AddRef() override { return 2; }
    int32_t Release() override { return 1; }
    uint32_t QueryInterface(const GUID*, void**) override { return 0x80004002; } // no case asks for it

    bool Init(IDotHost* host) override;
    bool Uninit() override;
    bool GetProperty(uint32_t key, uint32_t data, uint32_t size) override;
    bool SetProperty(uint32_t key, void* data, uint32_t size) override;

    bool Start() override;
    bool Stop() override;
    bool HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) override;
    bool SetAllowList(const char* text) override;
    bool ClearAllowList() override;
    bool SetReportSink(IReportSink* sink) override;

    // Turns log records on or off, instead of an Init that finds an ini file.
    void SetLogging(bool on) { m_logging = on; }

    // The steps of the decision; public, so that the model itself can be tested.

    // The guids of an answer with their machine ids, in document order of the guids, each guid once.
    using Answer = std::vector<std::pair<std::string, TextSet>>;
    bool ParseQueryResult(const std::string& text, Answer& answer);

    void HandleRule(IEventRecord* rule, const Answer& answer, uint32_t* reply);
    bool IsMatchmid(const std::string& key, const TextSet& queryMids, std::string& matched);
    bool ParseActionJson(const char* text);
    bool ModiyReply(const std::string& type, int32_t flags, uint32_t* reply); // sic
    void Report(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t reply, bool blockModified);

    const std::map<std::string, TextSet, TextOrder>& AllowList() const { return m_allowList; }
    const std::map<std::string, bool, TextOrder>& Actions() const { return m_actions; }

private:
    bool InitLogMoudle(); // sic
    std::string GetLocalMid();

    // The part of HandleEvent between the early returns and the action table. Returns the result of HandleEvent and
    // sets `matched` to the rule that allowed, if any.
    bool DecideByQuery(IEventRecord** rules, uint32_t ruleCount, uint32_t* reply, IEventRecord*& matched);
    int32_t QueryDot(const std::string& request, char** result);
    bool DeleteDot(const std::string& guid, const std::string& type);
    void FreeResult(char* result);
    bool FillAllowList(const std::string& text);
    void AddAllowListEntry(const struct JsonValue& entry);
    bool FillActions(const std::string& text);

    // The members of a record; a value that is absent gives 0 or the empty text.
    int32_t Int32Of(IEventRecord* record, const char* name);
    int64_t Int64Of(IEventRecord* record, const char* name);
    std::string TextOf(IEventRecord* record, const char* name);

    // `function` without its class; all of them are CMordRecv's.
    void LogTrace(std::string_view function, Trace::Parts message);
    void LogError(std::string_view function, Trace::Parts message);
    void LogTrace(std::string_view function, std::string_view message) { LogTrace(function, {message}); }
    void LogError(std::string_view function, std::string_view message) { LogError(function, {message}); }

    void Took(Branch branch) { m_branches.Add(branch); }
    void TookIf(bool holds, Branch branch) {
        if (holds) {
            Took(branch);
        }
    }

    // Count the kind of an event; a call from within a call to the host; the kind of a text of a record.
    void CountEvent(int32_t flags, uint32_t ruleCount);
    void CountEntry(bool isEvent, bool isDocument);
    void CountText(const std::vector<char>& buffer, const std::string& text);

    // During a call to the host.
    class Within {
    public:
        Within(ReceiverModel& receiver, Branch branch) : m_receiver(receiver), m_outer(receiver.m_within) {
            receiver.m_within = branch;
        }
        ~Within() { m_receiver.m_within = m_outer; }
        Within(const Within&) = delete;
        Within& operator=(const Within&) = delete;

    private:
        ReceiverModel& m_receiver;
        std::optional<Branch> m_outer;
    };

    Trace& m_trace;
    const SiblingState& m_siblings;
    BranchCounts& m_branches;

    bool m_logging = false;
    bool m_hasMidService = false;
    bool m_inited = false;
    IDotHost* m_host = nullptr;
    bool m_started = false;
    std::map<std::string, TextSet, TextOrder> m_allowList;
    IReportSink* m_reportSink = nullptr;
    std::string m_mid;
    uint32_t m_defenderMode = 3;
    uint32_t m_exceptionMode = 2;
    std::map<std::string, bool, TextOrder> m_actions;

    // For the counts only.
    std::optional<Branch> m_within;
    bool m_handledBefore = false;
    bool m_listSetBefore = false;
    uint32_t m_largeLists = 0; // accepted one after the other
};

// `text` up to its first NUL.
std::string UpToNul(const std::string& text);

// A narrow value as it shows in a log record.
std::string_view Logged(std::string_view value);

} // namespace model
