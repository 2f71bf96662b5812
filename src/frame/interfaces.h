// Every table of operations, and every record, that crosses the library's edge.
//
// Binary contract. An interface is a table of virtual operations; hosts and sibling libraries bind to the order of
// the operations, which never changes. The slot of each operation stands behind it. Slots that the component never
// calls are named Reserved0, Reserved1, … and have an empty body, so that an implementation need not care for them.
// Calling conventions: callConv.h. Text: narrow text is UTF-8, wide text UTF-16 (wideChar.h); both end with a NUL.
//
// Ownership. Components and services (all that derive from ISmartUnknown) are held by reference and given back
// through Release. The interfaces of the host (IDotHost, IEventRecord, IReportSink) are neither counted nor
// released by the component: the host keeps them valid for as long as each tells.
//
// Threads. The component has none of its own: every call into the host is made on the thread that called the
// component, and never with the component's lock held. Operations that several threads may enter at once say so.
#pragma once

#include "frame/identifiers.h"
#include "frame/values.h"
#include "platform/callConv.h"
#include "platform/wideChar.h"

// Object model

// Root of all components and services. Note the order: the query comes last.
class ISmartUnknown {
public:
    virtual int32_t AddRef() = 0;  // 0
    virtual int32_t Release() = 0; // 1

    // Stores the view of the object that `iid` names in `*out`, with a reference for the caller, and returns 0.
    // Returns 0x80004002 and leaves `*out` alone for an identifier that it does not know. Neither may be null.
    virtual uint32_t QueryInterface(const GUID* iid, void** out) = 0; // 2
};

// The factory that this library and its siblings export as "CreateZelkObject". Stores the component or service
// that `iid` names in `*out`, with a reference for the caller, and returns 0; returns 0x80004002 and leaves `*out`
// alone for an identifier that it does not know. Neither pointer may be null. Any thread may call it.
extern "C" typedef uint32_t(MORD_CDECL* CreateZelkObjectFunction)(const GUID* iid, void** out);

// What the host supplies

// A read-only record of named values: one connection event, or one rule. Owned by the host, valid for the duration
// of the HandleEvent call that it is passed to; it may be read several times in that call, on the calling thread.
//
// Event:  "flags" (32-bit, EventFlag), "pid" (32-bit), "remote_addr_ip", "local_addr_ip" (text),
//         "remote_addr_port", "local_addr_port" (32-bit), "net_drv" (64-bit, version of the network driver).
// Rule:   "guid", "type" (text).
// A value that is absent counts as 0 or as the empty text.
class IEventRecord {
public:
    virtual void Reserved0() {} // 0
    virtual void Reserved1() {} // 1
    virtual void Reserved2() {} // 2
    virtual void Reserved3() {} // 3
    virtual void Reserved4() {} // 4
    virtual void Reserved5() {} // 5
    virtual void Reserved6() {} // 6

    // Returns 0 when it stored the value in `*value`. Any other result means that there is no such value.
    virtual int32_t GetInt32(const char* name, int32_t* value) = 0; // 7

    // Stores the value in `*value`, which the caller has set to 0, or leaves it. The result is not looked at.
    virtual int32_t GetInt64(const char* name, int64_t* value) = 0; // 8

    virtual void Reserved7() {} // 9

    // Called twice. First with a null `buffer` and `*size` 0: a record that holds the text stores its size in
    // bytes, the NUL counted, in `*size` and returns 201; any other result, or a size that is not positive, means
    // that there is no such value. Then with a buffer of `*size` bytes: stores the text with its NUL and returns 0.
    virtual int32_t GetString(const char* name, char* buffer, int32_t* size) = 0; // 10
};

// The host's store of dots: the machine ids that it holds under a rule's guid. Given to Init, valid until the last
// event has been handled. Called from every thread that handles events.
class IDotHost {
public:
    virtual void Reserved0() {} // 0
    virtual void Reserved1() {} // 1

    // Deletes the dot that was used. `guid` and `type` are those of the rule that matched, `mid` is the machine id of
    // this host, `kind` is always 2. Returns 0 on success; a failure is logged and changes nothing else.
    virtual int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) = 0; // 2

    // Asks for the dots of the rules in `guidJson` (a query request), on behalf of the machine `mid`. Stores an answer
    // (a query result document, NUL-terminated, allocated by the host) in `*result`, which is null before the call, and
    // returns 0. Returns 1007 for a network error and any other code for a query error; `*result` may be set then too.
    virtual int32_t QueryDot(const char* guidJson, const char* mid, char** result) = 0; // 3

    // Takes an answer of QueryDot back. Must accept null. The result is not looked at.
    virtual int32_t FreeResult(char* result) = 0; // 4
};

// Where reports go. Set by SetReportSink; valid until it is replaced and the events that were under way are handled.
class IReportSink {
public:
    // Takes one report: `kind` is always 1, `text` a JSON document of `size` bytes (its NUL not counted), valid during
    // the call. The result is ignored; a report that is not taken is lost.
    virtual int32_t Report(int32_t kind, const char* text, uint32_t size) = 0; // 0
};

// The receiver

// Lifecycle and properties.
class IMordBase : public ISmartUnknown {
public:
    // Starts logging, keeps `host` and gets the machine id. Returns false when logging could not be settled (the base
    // library is not loaded, or refuses the logger) or `host` is null. Host and machine id are as before then; the log
    // may have changed: the debug output follows the ini file, and a former logger is gone if the new one was refused.
    // Returns true at once, and ignores `host`, when the object is initialised already. Not to be called while events
    // are being handled.
    virtual bool Init(IDotHost* host) = 0; // 3

    // Marks the object as not initialised, so that the next Init runs again. Clears nothing else. Returns true.
    virtual bool Uninit() = 0; // 4

    // Reads nothing, writes nothing, returns true: no property can be read back.
    virtual bool GetProperty(uint32_t key, uint32_t data, uint32_t size) = 0; // 5

    // Sets the property `key` (PropertyKey) from `data`; `size` must not be 0 and plays no further part. Returns false
    // before Init has been given a host, for null or no data, an unknown key, an empty machine id, and an action
    // document that is malformed or without a usable row. PROP_MID must not be set while events are being handled.
    virtual bool SetProperty(uint32_t key, void* data, uint32_t size) = 0; // 6
};

// The receiving end. The process has one, which CreateZelkObject makes and hands out; it counts no references and
// lives until the process ends.
//
// Threads. CreateZelkObject, AddRef, Release, QueryInterface, GetProperty, HandleEvent, Start, Stop, SetAllowList,
// ClearAllowList, SetReportSink and SetProperty may be called from several threads at once, with one exception:
// PROP_MID must not be set while events are handled. An event that is under way takes the old or the new value of what
// changes meanwhile. Init and Uninit must not be called while any other operation runs.
class IMordRev : public IMordBase {
public:
    // The slot of the virtual destructor as Windows hosts know it: destroys the object, gives its memory back when bit
    // 0 of `deleteFlag` is set, and returns the object's address. A host has no reason to call it: the process-wide
    // object must stay. It is declared as an ordinary operation because compilers differ in how many slots a virtual
    // destructor takes.
    virtual void* Destroy(uint32_t deleteFlag) { // 7
        (void)deleteFlag;
        return this;
    }

    virtual bool Start() = 0; // 8: opens the gate of the rule matching; returns true
    virtual bool Stop() = 0;  // 9: closes it; returns false, always, which is no failure

    // Decides one connection event. `rules` holds `ruleCount` rule records, which are taken in array order. `*reply`
    // receives a ReplyCode, and that is the verdict; the result only says whether the event was settled as foreseen.
    // Returns false with `*reply` 0 for a null `event` or `rules` or no rules; returns false and touches nothing for a
    // null `reply` or before Init. Calls QueryDot, DeleteDot, FreeResult and Report on the calling thread.
    virtual bool HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) = 0; // 10

    // Replaces the allow list by an allow-list document. Returns false, and keeps the old list, for a text that is not
    // JSON or has no "mid_list"; a null `text` counts as an empty one, which is not JSON. `text` is not kept.
    virtual bool SetAllowList(const char* text) = 0; // 11

    virtual bool ClearAllowList() = 0; // 12: empties the allow list; returns true

    // Sets the target of the reports; null ends them. Returns true. An event that is under way can still report to the
    // former target: keep that valid until no event is handled that began before this call returned.
    virtual bool SetReportSink(IReportSink* sink) = 0; // 13
};

// Services of the sibling libraries

// Finds modules by key.
class IModuleFinder : public ISmartUnknown {
public:
    // Returns the handle of the module behind a wide key such as "module.base", or null. The handle is what
    // GetModuleHandleW gives (dlopen elsewhere), and is not counted.
    virtual void* FindModule(const WideChar* moduleKey) = 0; // 3
};

// What IMachineIdService fills. The caller clears it first.
struct MachineIdRecord {
    WideChar machineId[68]; // NUL-ended; nothing else of the record is read
};
static_assert(sizeof(MachineIdRecord) == 136, "the record has 136 bytes");

class IMachineIdService : public ISmartUnknown {
public:
    // Fills the record and returns 0, or returns another value.
    virtual int32_t GetMachineId(MachineIdRecord* record) = 0; // 3
};

// Where the log settings stand.
class ILogConfig : public ISmartUnknown {
public:
    virtual void Reserved0() {} // 3

    // For the code 0x200002 (LOG_CONFIG_DIRECTORY) the directory of "Zelklog.ini", with its last separator, or null.
    // The text belongs to the object and lives as long as it. `zero` is always 0.
    virtual const WideChar* GetConfigText(uint32_t code, uint32_t zero) = 0; // 4
};
constexpr uint32_t LOG_CONFIG_DIRECTORY = 0x200002;

// The logger. WriteRecord is called from several threads at once.
class ILogWriter : public ISmartUnknown {
public:
    virtual int32_t Start(const WideChar* moduleName, uint32_t zero) = 0; // 3: starts the logger under that name
    virtual void Reserved0() {}                                           // 4
    virtual int32_t SetLevel(uint32_t level) = 0;                         // 5: records below it may be dropped
    virtual void Reserved1() {}                                           // 6

    // Writes one record, whose text ends in carriage return and line feed. Levels: 30 trace, 35 error.
    virtual int32_t WriteRecord(const WideChar* text, int32_t level) = 0; // 7
};

// What ITextConverter works on. The lengths count characters of the respective kind: bytes or UTF-16 units.
struct TextConversionRequest {
    uint32_t codePage;            // always 65001, UTF-8
    uint32_t sourceLength;        // without the NUL
    uint32_t destinationCapacity; // the NUL needs room in it too
    uint32_t reserved;            // always 0
    const void* source;
    void* destination;
};
static_assert(sizeof(void*) != 4 || sizeof(TextConversionRequest) == 24, "six words of 32 bits");

// Converts text. Called from several threads at once.
class ITextConverter : public ISmartUnknown {
public:
    // Converts by `command` and leaves a NUL-ended text in the destination, which may hold anything before the call.
    // The result is not looked at.
    virtual int32_t Convert(uint32_t command, TextConversionRequest* request) = 0; // 3
};
constexpr uint32_t CONVERT_NARROW_TO_WIDE = 0x10101;
constexpr uint32_t CONVERT_WIDE_TO_NARROW = 0x10100;
