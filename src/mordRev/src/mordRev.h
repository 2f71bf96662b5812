// The receiver: one object per process, which CreateZelkObject returns.
#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "frame/interfaces.h"
#include "frame/objectImpl.h"
#include "frame/servicePointer.h"
#include "frame/values.h"
#include "mordRev/src/allowList.h"
#include "mordRev/src/queryResultTable.h"

class CMordRecv;

using ActionTable = std::map<std::string, bool>; // rule type (never empty) to action (true allows)

using CMordRecvObject = Base::CZelkObjectImpl<CMordRecv, Base::empty_locker, Base::default_object_creator<CMordRecv>>;

// Contracts of the interface operations: interfaces.h. The bool of a decision operation below says whether the step was
// carried out; the decision itself is in `*reply`. Nothing is thrown or caught here: std::bad_alloc passes through
// every operation, with the lock released.
//
// Threads. Everything runs on the callers' threads, several at once. m_lock guards m_allowList and m_actionTable.
// SetAllowList, ClearAllowList and ParseActionJson hold it throughout; IsMatchmid holds it except while it hashes its
// arguments; ModiyReply holds it for the look-up. It is never held during a call into the host, but during calls into
// the logger and the text converter. It is not recursive: no holder calls another.
//
// The started flag, the two modes and the report sink are atomic words that can change while events are handled: an
// event uses the old or the new value at each of its reads. The other fields are plain and must not be written while
// events are handled; only Init, Uninit and PROP_MID write them.
//
// Texts are ordered as unsigned bytes, a prefix first. Nothing folds case.
class CMordRecv final : public CMordRecvObject, public IMordRev {
public:
    // Allocates the lock and draws the hash keys. Throws std::bad_alloc if the lock cannot be made.
    CMordRecv();
    ~CMordRecv();
    CMordRecv(const CMordRecv&) = delete;
    CMordRecv& operator=(const CMordRecv&) = delete;

    // Base::CZelkObjectBase. Destroys the object. Nothing calls it, since Release does not count.
    void DestroySelf() override;

    // ISmartUnknown. The object counts no references: AddRef always returns 2, Release 1.
    int32_t AddRef() override;
    int32_t Release() override;
    uint32_t QueryInterface(const GUID* iid, void** out) override;

    // IMordBase
    bool Init(IDotHost* host) override;
    bool Uninit() override;
    bool GetProperty(uint32_t key, uint32_t data, uint32_t size) override;
    bool SetProperty(uint32_t key, void* data, uint32_t size) override;

    // IMordRev
    void* Destroy(uint32_t deleteFlag) override;
    bool Start() override;
    bool Stop() override;
    bool HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) override;
    bool SetAllowList(const char* text) override;
    bool ClearAllowList() override;
    bool SetReportSink(IReportSink* sink) override;

    // Starts logging as the ini file of the base library says. Returns false, unlogged, if the base library or its
    // logger is unavailable. Runs within Init only.
    bool InitLogMoudle(); // sic

    // Returns the machine id of this host: m_mid, or else the id that the base library's service delivers, which is
    // kept in m_mid. Returns an empty text on failure, and a later call tries again; only a failure of the service
    // itself is logged. Two threads must not call it at once.
    std::string GetLocalMid();

    // Parses the host's answer and adds its entries to `*table`, which is not cleared. A NUL must follow `text`, which
    // is not needed afterwards. Returns false, and logs the reason, for a text that is empty or not JSON. True does not
    // mean that all rules are valid: a malformed rule is logged and ends the scan, and the entries before it stay.
    bool ParseQueryResult(std::string_view text, QueryResultTable* table);

    // Decides one rule and, if it allows, has the host delete the dot. Returns false, logs the reason and leaves
    // `*reply` unchanged if it cannot decide: a null `reply` or `event`, no host, or not started. `rule` must not be
    // null. Otherwise stores REPLY_BLOCK or REPLY_ALLOW in `*reply` and returns true. Takes m_lock through IsMatchmid.
    bool HandleEventInner(IEventRecord* event, IEventRecord* rule, QueryResultTable queryResult, uint32_t* reply);

    // Returns whether the allow list has one of `queryMids` under `protocolKey`, and logs the outcome. If so, stores
    // the smallest of those in `*midMatchOutput`, which is unchanged otherwise. Takes m_lock.
    bool IsMatchmid(std::string protocolKey, MidSet queryMids, std::string* midMatchOutput);

    // Replaces the action table with the action document `text`, which must not be null. Returns whether the table then
    // has a row. A text that is not JSON leaves the table unchanged; any other JSON clears it first. Invalid rows are
    // skipped. Failures and skipped rows are logged. Takes m_lock.
    bool ParseActionJson(const char* text);

    // Makes the final reply from `*reply`, by defender mode, the action of `type` and the event's `flags`. Returns
    // whether a block became an allow; returns false if `reply` is null. Takes m_lock for the look-up in
    // MODE_ACTION_TABLE.
    bool ModiyReply(std::string type, uint32_t flags, uint32_t* reply); // sic

    // Sends the report of one decision to the report sink. In emergency mode, for a disconnect event, without a sink
    // and for null or empty arguments it sends nothing and logs why. Takes no lock.
    void ReportEventHandleRes(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t reply,
                              bool blockModified);

    // Stores the image path of the process `pid` in `*path`: UTF-8, ASCII letters in lower case. Returns false, logs
    // the reason and leaves `*path` empty on failure. Uses no field and no lock.
    static bool GetProcPathByPid(uint32_t pid, std::string* path);

private:
    // Decides the rules in array order until one allows; returns that rule, or null if none does.
    IEventRecord* MatchRules(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount,
                             const QueryResultTable& queryResult, uint32_t* reply);

    // The atomic fields are as large as plain ones: they contain no lock.
    static_assert(sizeof(std::atomic<bool>) == sizeof(bool) && sizeof(std::atomic<uint32_t>) == sizeof(uint32_t) &&
                  sizeof(std::atomic<IReportSink*>) == sizeof(IReportSink*));

    friend struct MordRevFields; // gives tests access to the fields

    bool m_inited = false;
    IDotHost* m_host = nullptr; // not owned
    std::atomic<bool> m_started = false;
    AllowList m_allowList;
    std::timed_mutex m_lock;
    std::atomic<IReportSink*> m_reportSink = nullptr; // not owned
    ServicePointer<IMachineIdService> m_midService;
    std::string m_mid;
    std::atomic<uint32_t> m_defenderMode = MODE_ACTION_TABLE;
    std::atomic<uint32_t> m_exceptionMode = EXCEPTION_BLOCK;
    ActionTable m_actionTable;
    std::string m_spareText; // unused; part of the object's layout
};
