// The receiver and what its host supplies, as a Windows developer declares them: with a virtual destructor, which takes
// one slot in this ABI. Nothing of the library's own headers is used here.
#pragma once

#include <stdint.h>

struct InterfaceId {
    uint32_t words[4];
};

// {7219CBFF-058B-4ACE-B29D-090214DB480C} and {6DADA238-8BD1-4DE4-A224-7D27539DA995}, as the words that lie in memory.
constexpr InterfaceId receiverId = {{0x7219CBFF, 0x4ACE058B, 0x02099DB2, 0x0C48DB14}};
constexpr InterfaceId secondReceiverId = {{0x6DADA238, 0x4DE48BD1, 0x277D24A2, 0x95A99D53}};

class __declspec(novtable) Unknown {
public:
    virtual int32_t AddRef() = 0;
    virtual int32_t Release() = 0;
    virtual uint32_t QueryInterface(const InterfaceId* iid, void** out) = 0;
};

class __declspec(novtable) EventRecord {
public:
    virtual void Unused0() = 0;
    virtual void Unused1() = 0;
    virtual void Unused2() = 0;
    virtual void Unused3() = 0;
    virtual void Unused4() = 0;
    virtual void Unused5() = 0;
    virtual void Unused6() = 0;
    virtual int32_t GetInt32(const char* name, int32_t* value) = 0;
    virtual int32_t GetInt64(const char* name, int64_t* value) = 0;
    virtual void Unused9() = 0;
    virtual int32_t GetString(const char* name, char* buffer, int32_t* size) = 0;
};

class __declspec(novtable) DotHost {
public:
    virtual void Unused0() = 0;
    virtual void Unused1() = 0;
    virtual int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) = 0;
    virtual int32_t QueryDot(const char* guidJson, const char* mid, char** result) = 0;
    virtual int32_t FreeResult(char* result) = 0;
};

class __declspec(novtable) ReportSink {
public:
    virtual int32_t Report(int32_t kind, const char* text, uint32_t size) = 0;
};

class __declspec(novtable) ReceiverBase : public Unknown {
public:
    virtual bool Init(DotHost* host) = 0;
    virtual bool Uninit() = 0;
    virtual bool GetProperty(uint32_t key, uint32_t data, uint32_t size) = 0;
    virtual bool SetProperty(uint32_t key, void* data, uint32_t size) = 0;
};

class __declspec(novtable) Receiver : public ReceiverBase {
public:
    virtual ~Receiver() {}
    virtual bool Start() = 0;
    virtual bool Stop() = 0;
    virtual bool HandleEvent(EventRecord* event, EventRecord** rules, uint32_t ruleCount, uint32_t* reply) = 0;
    virtual bool SetAllowList(const char* text) = 0;
    virtual bool ClearAllowList() = 0;
    virtual bool SetReportSink(ReportSink* sink) = 0;
};

using Factory = uint32_t(__cdecl*)(const InterfaceId* iid, void** out);
