// The receiver: one object a process, handed out by CreateZelkObject.
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

using ActionTable = std::map<std::string, bool>; // rule type, never empty, to action

using CMordRecvObject = Base::CZelkObjectImpl<CMordRecv, Base::empty_locker, Base::default_object_creator<CMordRecv>>;

// Contracts of the interface operations: interfaces.h. A bool of the decision operations below says whether the step
// was carried out; the decision itself is always in the reply. Nothing is thrown or caught: exhausted memory passes
// through every operation as std::bad_alloc, with the lock released.
//
// Threads. Everything runs on the caller's threads, of which several may be here at once. m_lock guards m_allowList
// and m_actionTable. It is held for the whole of SetAllowList, ClearAllowList and ParseActionJson, of
// IsMatchmid but for the hashing of what that is given, and for the look-up in ModiyReply; never across a call to the
// host. It is not recursive. The started flag, the two modes and the report sink are atomic words, which may be set
// while events are handled: an event takes the old or the new value at each of its reads. The other fields are plain,
// and are not written while events are handled: Init, Uninit and PROP_MID are not for that time.
//
// Texts are ordered by unsigned bytes over the common length, then the shorter first. Nothing folds case.
class CMordRecv final : public CMordRecvObject, public IMordRev {
public:
    CMordRecv();
    ~CMordRecv();
    CMordRecv(const CMordRecv&) = delete;
    CMordRecv& operator=(const CMordRecv&) = delete;

    // Base::CZelkObjectBase. Nothing calls it: Release does not count.
    void DestroySelf() override;

    // ISmartUnknown. The object counts no references: AddRef returns 2 and Release 1, always.
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

    // Settles logging by the base library's ini file; false when the base library could not be had.
    bool InitLogMoudle(); // sic

    // The machine id of this host: the one known already, else that of the base library's service, which is kept. Empty
    // on any failure; a later call tries again. Not for two threads at once.
    std::string GetLocalMid();

    // Turns the host's answer into entries of `*table`, which is added to and not cleared. A NUL must stand behind
    // `text`, which is not needed afterwards. False for a text that is empty or no JSON. True says nothing of the
    // members: a malformed rule ends the scan, and earlier ones stay.
    bool ParseQueryResult(std::string_view text, QueryResultTable* table);

    // Decides one rule. False, with `*reply` left alone, when it was not decided: null arguments, no host, not started.
    bool HandleEventInner(IEventRecord* event, IEventRecord* rule, QueryResultTable queryResult, uint32_t* reply);

    // Whether one of `queryMids` stands in the allow list under `protocolKey`. If so the least of those that do
    // replaces `*midMatchOutput`, which is left alone otherwise.
    bool IsMatchmid(std::string protocolKey, MidSet queryMids, std::string* midMatchOutput);

    // Replaces the action table by an action document. True when the table then has a row. A text that is no JSON
    // leaves the table alone; any other empties it first.
    bool ParseActionJson(const char* text);

    // The last word on a reply, by defender mode, action of `type` and flags. True when a block became an allow.
    bool ModiyReply(std::string type, uint32_t flags, uint32_t* reply); // sic

    // Gives the report of one decision to the report sink; none in emergency mode and for disconnect events.
    void ReportEventHandleRes(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t reply,
                              bool blockModified);

    // The image path of a process, in lower case, into `*path`, which is empty on failure. A failure is logged.
    static bool GetProcPathByPid(uint32_t pid, std::string* path);

private:
    // Returns the first rule that allows, or null when none does.
    IEventRecord* GoThroughRules(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount,
                                 const QueryResultTable& queryResult, uint32_t* reply);

    // The atomic fields are as large as the plain ones: no lock comes with them.
    static_assert(sizeof(std::atomic<bool>) == sizeof(bool) && sizeof(std::atomic<uint32_t>) == sizeof(uint32_t) &&
                  sizeof(std::atomic<IReportSink*>) == sizeof(IReportSink*));

    friend struct MordRevFields; // tests look at the fields through it

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
    std::string m_spareText; // part of the object's layout, without a use
};
