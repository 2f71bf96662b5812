// The operating system as a test scripts it: machine, caller, processes with their memory, threads, drives, and what
// each function answers.
//
// It implements platform.h, processApi.h and gateEnter.h in the tests of process inspection, in place of the real
// bodies. There is one in the program; Reset restores its initial state. Every call into it
// is kept as a line of text, see `calls`. For one thread at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "kit/system/scriptedProcess/targetMemory.h"
#include "platform/processApi.h"

namespace scripted {

using Text = std::basic_string<WideChar>;

constexpr uint32_t accessViolation = 0xC0000005;
constexpr uint32_t partialCopy = 0x8000000D;
constexpr uint32_t invalidHandle = 0xC0000008;
constexpr uint32_t lengthMismatch = 0xC0000004;
constexpr uint32_t fileInvalid = 0xC0000098;
constexpr uint32_t invalidAddress = 0xC0000141;
constexpr uint32_t procedureNotFound = 0xC000007A;

// The scripted answer of a function.
struct Outcome {
    uint32_t status = 0;
    bool performs = false; // whether it does its work all the same
};

// A memory region, for the queries of virtual memory.
struct Region {
    uint64_t base;
    uint64_t size;
    Text file; // in device form; empty for private memory
};

struct Process {
    uint32_t parent = 0;
    int32_t isWow64 = 0;          // what IsWow64Process stores
    bool wow64QueryFails = false; // it stores nothing then
    uint64_t peb32 = 0;
    uint64_t peb64 = 0;
    TargetMemory memory;
    std::vector<Region> regions;
};

struct Thread {
    uint32_t id;
    uint32_t owner;
    uint64_t teb32 = 0;
    uint64_t teb64 = 0;
    uint64_t start = 0;
    bool opens = true; // whether OpenThread gives a handle
};

// An entry of the system's own process list.
struct ListedProcess {
    uint64_t id; // of the caller's width
    uint64_t parent;
    std::optional<Text> name;
};

// The contents of a reply with a mapped file's name, where they differ from the real ones.
struct MappedNameReply {
    std::optional<uint16_t> length;  // bytes
    std::optional<uint64_t> address; // of the text
    bool fillsReply = false;         // the text goes on to the end of the reply, without a NUL
};

struct System {
    // Machine and caller
    uint16_t architecture = 9; // AMD64
    int32_t callerIsWow64 = 0;
    bool callerWow64QueryFails = false;
    std::set<std::string> missingModules; // in small letters: "ntdll.dll", "kernel32.dll", "zelkbase.dll"
    std::set<std::string> missing;        // names that no module of the caller exports
    void* converterFactory = nullptr;     // what ZelkBase.dll exports as CreateZelkObject

    // Others
    std::map<uint32_t, Process> processes;
    std::set<uint32_t> denied; // ids of those that refuse to be opened
    std::vector<Thread> threads;
    std::vector<ListedProcess> processList;
    uint32_t processListGrowth = 0; // how many bytes the list grows between two queries
    std::map<char, Text> devices;   // drive letter to device names, NULs inside included
    MappedNameReply mappedName;
    bool snapshotFails = false;
    bool snapshotIsInvalid = false; // -1 is given for one, which holds nothing
    bool virtualAllocFails = false;
    size_t threadsUntilFailure = SIZE_MAX; // how many a walk through a snapshot gives before it fails

    // Arrays that are allocated by new (std::nothrow): how many there were, which one fails (1 is the first, 0 none),
    // and the size in bytes above which all do.
    uint32_t arrayAllocations = 0;
    uint32_t failingArrayAllocation = 0;
    size_t largestArrayAllocation = SIZE_MAX;

    // The calling thread
    uint32_t lastError = 0;
    uint32_t lastStatus = 0;

    // Statuses by function and number of the call, counted from 1; by the address that a read begins at; and by its
    // address and size.
    std::map<std::pair<std::string, unsigned>, Outcome> byCall;
    std::map<uint64_t, Outcome> byAddress;
    std::map<std::pair<uint64_t, uint64_t>, Outcome> byRange;
    std::map<std::string, unsigned> callCounts;

    // Scripts the next call of `function`.
    void Next(const std::string& function, Outcome outcome) { byCall[{function, callCounts[function] + 1}] = outcome; }

    // From this many reads of memory on all fail, so that a walk through a cycle ends. Also the gate's.
    uint64_t readLimit = UINT64_MAX;
    uint64_t reads = 0;

    // Runs in each read of memory.
    std::function<void()> onRead;

    // What went to the debug output.
    std::vector<Text> debugOutput;

    // Runs once, in the first GetModuleHandleW.
    std::function<void()> onFirstModuleHandle;

    // Runs in CloseHandle, when the handle is closed.
    std::function<void()> onClose;

    // Each call as a line, such as "ReadProcessMemory(process 7, 0x7ffd0010, 8, null)". Handles stand by what they are
    // of, addresses and access rights in hexadecimal, sizes in decimal, pointers to a place for a count as "count" or
    // "null".
    std::vector<std::string> calls;
    bool keepsCalls = true;

    std::vector<std::string> TakeCalls();

    // How many of the lines begin so.
    size_t Count(const std::string& beginning) const;

    // Handles that are open, and how often something was closed that was none.
    struct Handle {
        enum Kind { OfProcess, OfThread, OfSnapshot } kind;
        uint32_t id;
        size_t position = 0; // of a snapshot
    };
    std::map<platform::Handle, Handle> handles;
    size_t wrongCloses = 0;

    // Areas of VirtualAlloc that were not given back.
    size_t openAreas = 0;
};

System& Instance();

// A system with an AMD64 machine, a 64-bit caller, all names, and nothing else in it.
System& Reset();

// A handle as OpenProcess and OpenThread give it.
platform::Handle OpenProcessHandle(uint32_t processId);
platform::Handle OpenThreadHandle(uint32_t threadId);

} // namespace scripted
