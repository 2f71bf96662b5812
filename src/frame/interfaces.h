// Every interface and every record of the library's binary interface.
//
// Binary contract. An interface is a table of virtual operations. Hosts and sibling libraries bind to the order of the
// operations, which never changes; the number behind an operation is its slot. Slots that the component never calls are
// named Reserved0, Reserved1, … and have an empty body, so that an implementation can ignore them. Calling conventions:
// callConv.h. Narrow text is UTF-8, wide text is UTF-16 (wideChar.h); both are NUL-terminated.
//
// Ownership. Components and services (what derives from ISmartUnknown) are reference-counted and given back with
// Release. The component neither counts nor releases the interfaces of the host (IDotHost, IEventRecord, IReportSink):
// the host keeps each of them valid for the time given at its declaration. A text or an array that an operation
// receives is valid during the call and not kept.
//
// Threads. The component starts no thread: it calls the host's interfaces on the thread that called the component, and
// never with its lock held. Operations that several threads may call at once say so.
//
// Errors. Operations report a failure through their result; many also log it. The component throws std::bad_alloc when
// memory runs out, and nothing else; it catches nothing, so an exception of the host passes through it.
#pragma once

#include "frame/identifiers.h"
#include "frame/values.h"
#include "platform/callConv.h"
#include "platform/wideChar.h"

// Object model

// Root of all components and services. Note the order: QueryInterface comes last. Any thread may call.
class ISmartUnknown {
public:
    virtual int32_t AddRef() = 0;  // 0
    virtual int32_t Release() = 0; // 1

    // Stores the interface with the identifier `iid` in `*out`, with a reference for the caller, and returns 0. Returns
    // 0x80004002 for an unknown identifier and leaves `*out` unchanged. Neither pointer may be null.
    virtual uint32_t QueryInterface(const GUID* iid, void** out) = 0; // 2
};

// The factory that this library and its siblings export as "CreateZelkObject". Stores the component or service `iid` in
// `*out`, with a reference for the caller, and returns 0. Returns 0x80004002 for an unknown identifier and leaves
// `*out` unchanged; a sibling may return other codes. Neither pointer may be null. Any thread may call.
extern "C" typedef uint32_t(MORD_CDECL* CreateZelkObjectFunction)(const GUID* iid, void** out);

// What the host supplies

// A read-only record of named values: one connection event, or one rule. The host owns it and keeps it valid for the
// HandleEvent call that it is passed to. The component may read it several times during that call, on the calling
// thread.
//
// Event:  "flags" (32-bit, EventFlag), "pid" (32-bit), "remote_addr_ip", "local_addr_ip" (text),
//         "remote_addr_port", "local_addr_port" (32-bit), "net_drv" (64-bit, version of the network driver).
// Rule:   "guid", "type" (text).
//
// A missing value counts as 0 or as the empty text; nothing is logged for it.
class IEventRecord {
public:
    virtual void Reserved0() {} // 0
    virtual void Reserved1() {} // 1
    virtual void Reserved2() {} // 2
    virtual void Reserved3() {} // 3
    virtual void Reserved4() {} // 4
    virtual void Reserved5() {} // 5
    virtual void Reserved6() {} // 6

    // Stores the value in `*value` and returns 0. Any other result means that there is no such value; `*value` is then
    // ignored.
    virtual int32_t GetInt32(const char* name, int32_t* value) = 0; // 7

    // Stores the value in `*value`, which the caller has set to 0, or leaves it unchanged if there is no such value.
    // The result is ignored.
    virtual int32_t GetInt64(const char* name, int64_t* value) = 0; // 8

    virtual void Reserved7() {} // 9

    // Two calls read a text. The first has a null `buffer` and `*size` 0: a record that has the text stores its size in
    // bytes, including the NUL, in `*size` and returns 201; any other result, or a size that is not positive, means
    // that there is no such text. The second has a buffer of `*size` bytes: the record stores the text with its NUL and
    // returns 0.
    virtual int32_t GetString(const char* name, char* buffer, int32_t* size) = 0; // 10
};

// The host's store of dots: the machine ids that it holds for a rule's guid. Passed to Init; the host keeps it valid
// until the last event has been handled. Every thread that handles events calls it, several at once.
class IDotHost {
public:
    virtual void Reserved0() {} // 0
    virtual void Reserved1() {} // 1

    // Deletes the dot that allowed an event. `guid` and `type` are those of the matching rule, `mid` is the machine id
    // of this host, `kind` is always 2. Returns 0 on success. The component logs the outcome and otherwise ignores it.
    virtual int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) = 0; // 2

    // Asks for the dots of the rules in `guidJson` (a query request) on behalf of the machine `mid`. Stores the answer,
    // a query result document in memory of the host, in `*result`, which is null before the call, and returns 0.
    // Returns 1007 for a network error and any other code for a query error; `*result` may be set then too.
    virtual int32_t QueryDot(const char* guidJson, const char* mid, char** result) = 0; // 3

    // Takes back the `result` of a QueryDot call, null included. The component calls it once for each query, except for
    // a query that was answered in MODE_ALL_FORBID. The result is ignored.
    virtual int32_t FreeResult(char* result) = 0; // 4
};

// The target of the reports, set with SetReportSink. The host keeps it valid until it has been replaced and every event
// that began before has been handled. Every thread that handles events calls it, several at once.
class IReportSink {
public:
    // Takes one report. `kind` is always 1; `text` is a JSON document of `size` bytes without the NUL, valid during the
    // call. The result is ignored; a report that the sink does not take is lost.
    virtual int32_t Report(int32_t kind, const char* text, uint32_t size) = 0; // 0
};

// The receiver

// Lifecycle and properties.
class IMordBase : public ISmartUnknown {
public:
    // Starts logging, keeps `host` (not owned) and gets the machine id. An empty machine id is no failure.
    //
    // Returns true at once, and ignores `host`, if the object is initialised already. Returns false if `host` is null
    // or logging failed to start (the base library is not loaded or refuses the logger). Host and machine id are then
    // unchanged, but the log may have changed: the debug output follows the ini file, and the former logger is released
    // if the new one was refused. Must not be called while events are handled.
    virtual bool Init(IDotHost* host) = 0; // 3

    // Marks the object as not initialised, so that the next Init runs again. Clears nothing else: HandleEvent and
    // SetProperty still work. Returns true.
    virtual bool Uninit() = 0; // 4

    // Does nothing and returns true: no property can be read back.
    virtual bool GetProperty(uint32_t key, uint32_t data, uint32_t size) = 0; // 5

    // Sets the property `key` (PropertyKey) to the value at `data`, which need not be aligned and is not kept. `size`
    // must not be 0 and is otherwise ignored. Returns false before the first successful Init, for a null `data` or size
    // 0, an unknown key, an empty machine id, and an action document that is malformed or has no valid row; all but the
    // unknown key are logged. PROP_MID must not be set while events are handled.
    virtual bool SetProperty(uint32_t key, void* data, uint32_t size) = 0; // 6
};

// The receiving end. CreateZelkObject creates one per process. It counts no references (AddRef always returns 2,
// Release 1) and exists until the process ends.
//
// Threads. Several threads may call CreateZelkObject, AddRef, Release, QueryInterface, GetProperty, HandleEvent, Start,
// Stop, SetAllowList, ClearAllowList, SetReportSink and SetProperty at once, with one exception: PROP_MID must not be
// set while events are handled. An event in progress uses the old or the new value of what changes. Init and Uninit
// must not be called while any other operation runs.
class IMordRev : public IMordBase {
public:
    // The slot of the virtual destructor in the Windows ABI: destroys the object, frees its memory if bit 0 of
    // `deleteFlag` is set, and returns the object's address. A host must not call it on the process-wide object. It is
    // declared as an ordinary operation because compilers differ in the number of slots that a virtual destructor
    // takes.
    virtual void* Destroy(uint32_t deleteFlag) { // 7
        (void)deleteFlag;
        return this;
    }

    virtual bool Start() = 0; // 8: lets rules match; returns true
    virtual bool Stop() = 0;  // 9: stops that; always returns false, which is no failure

    // Decides one connection event. `rules` holds `ruleCount` rule records, none of them null, tried in array order
    // until one allows. `*reply` receives the verdict, a ReplyCode.
    //
    // The result is not the verdict. It is true if a rule allowed the event or no rule was needed (emergency mode,
    // disconnect, network error, MODE_ALL_FORBID with an answered query). It is false if no rule allowed it, for a
    // query error, an answer that is not JSON, and a parameter error. A null `event` or `rules` or a `ruleCount` of 0
    // sets `*reply` to 0. A null `reply`, or a call before Init, changes nothing. Parameter errors are logged and not
    // reported.
    //
    // Calls QueryDot, FreeResult, DeleteDot and Report on the calling thread, without a lock, and takes as long as they
    // do.
    virtual bool HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* reply) = 0; // 10

    // Replaces the allow list with an allow-list document, a NUL-terminated text that is not kept. Returns false, logs
    // the reason and keeps the old list if the text is not JSON or has no "mid_list"; null counts as an empty text,
    // which is not JSON. Malformed entries are skipped silently. Events that need the list wait until the call ends.
    virtual bool SetAllowList(const char* text) = 0; // 11

    virtual bool ClearAllowList() = 0; // 12: empties the allow list; returns true

    // Sets the target of the reports (not owned); null stops them. Returns true. An event in progress can still report
    // to the former sink: keep that valid until every event that began before this call has been handled.
    virtual bool SetReportSink(IReportSink* sink) = 0; // 13
};

// Services of the sibling libraries

// Finds modules by key.
class IModuleFinder : public ISmartUnknown {
public:
    // Returns the handle of the module with the wide key `moduleKey`, such as "module.base", or null. The handle is
    // what GetModuleHandleW returns (dlopen on Linux) and holds no reference.
    virtual void* FindModule(const WideChar* moduleKey) = 0; // 3
};

// The record that IMachineIdService fills. The caller clears it first.
struct MachineIdRecord {
    WideChar machineId[68]; // NUL-terminated; the only field that is read
};
static_assert(sizeof(MachineIdRecord) == 136, "the record has 136 bytes");

// Delivers the machine id of this host.
class IMachineIdService : public ISmartUnknown {
public:
    // Fills `*record` and returns 0. Any other result is a failure; the record is then ignored.
    virtual int32_t GetMachineId(MachineIdRecord* record) = 0; // 3
};

// Locates the log settings.
class ILogConfig : public ISmartUnknown {
public:
    virtual void Reserved0() {} // 3

    // For the code 0x200002 (LOG_CONFIG_DIRECTORY) returns the directory of "Zelklog.ini" with its trailing separator,
    // or null. The object owns the text, which is valid as long as the object. `zero` is always 0.
    virtual const WideChar* GetConfigText(uint32_t code, uint32_t zero) = 0; // 4
};
constexpr uint32_t LOG_CONFIG_DIRECTORY = 0x200002;

// The logger. Several threads call WriteRecord at once, some of them with the component's lock held: it must not call
// the component. The component ignores all results.
class ILogWriter : public ISmartUnknown {
public:
    virtual int32_t Start(const WideChar* moduleName, uint32_t zero) = 0; // 3: starts the logger under that name
    virtual void Reserved0() {}                                           // 4
    virtual int32_t SetLevel(uint32_t level) = 0;                         // 5: records below it may be dropped
    virtual void Reserved1() {}                                           // 6

    // Writes one record, which ends in carriage return and line feed. Levels: 30 trace, 35 error.
    virtual int32_t WriteRecord(const WideChar* text, int32_t level) = 0; // 7
};

// A conversion that ITextConverter performs. Lengths count units of the text in question: bytes or UTF-16 units. The
// caller owns both buffers.
struct TextConversionRequest {
    uint32_t codePage;            // always 65001, UTF-8
    uint32_t sourceLength;        // without the NUL
    uint32_t destinationCapacity; // including room for the NUL
    uint32_t reserved;            // always 0
    const void* source;
    void* destination;
};
static_assert(sizeof(void*) != 4 || sizeof(TextConversionRequest) == 24, "six words of 32 bits");

// Converts text. Several threads call it at once, some of them with the component's lock held: it must not call the
// component.
class ITextConverter : public ISmartUnknown {
public:
    // Converts in the direction `command` and leaves a NUL-terminated text in the destination, whose previous content
    // is undefined. The result is ignored.
    virtual int32_t Convert(uint32_t command, TextConversionRequest* request) = 0; // 3
};
constexpr uint32_t CONVERT_NARROW_TO_WIDE = 0x10101;
constexpr uint32_t CONVERT_WIDE_TO_NARROW = 0x10100;
