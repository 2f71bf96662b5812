// What the bodies of the scripted system share.
#pragma once

#include <string>

#include "kit/system/scriptedProcess/system.h"

namespace scripted {

// "process 7", "thread 9", "snapshot", "self", or a number for what is no handle.
std::string Name(platform::Handle handle);
std::string Hex(uint64_t value);
std::string Pointer(const void* pointer, const char* name); // "null" or the name
std::string Narrow(const WideChar* text);                   // ASCII

// Keeps the line of one call, which `line` makes.
template <typename Line>
void Note(const Line& line) {
    if (Instance().keepsCalls) {
        Instance().calls.push_back(line());
    }
}

// Counts the call of `function`, and gives what the script tells of the one with that number, if anything. Where calls
// are not kept and none is scripted, nothing is counted.
std::optional<Outcome> ScriptedOutcome(const char* function);

platform::Handle NewHandle(System::Handle::Kind kind, uint32_t id);

// The object of a handle, or null.
Process* ProcessOf(platform::Handle handle);
const Thread* ThreadOf(platform::Handle handle);
System::Handle* SnapshotOf(platform::Handle handle);

// An answer: its status, and how many bytes were delivered.
struct Answer {
    uint32_t status;
    size_t written;
};

// Reads the target's memory for the function of that name.
Answer ReadTarget(const char* function, platform::Handle process, uint64_t address, void* destination, uint64_t size);

// The queries behind the functions of those names, with replies in the layout of a system whose addresses are `P`.
template <typename P>
Answer QueryProcess(const char* function, platform::Handle process, uint32_t informationClass, void* buffer,
                    uint64_t size);
template <typename P>
Answer QueryThread(const char* function, platform::Handle thread, uint32_t informationClass, void* buffer,
                   uint64_t size);
template <typename P>
Answer QueryMemory(const char* function, platform::Handle process, uint64_t address, uint32_t informationClass,
                   void* buffer, uint64_t size);

// The address of the function of that name in a module that the caller sees. A name without a body in the scripted
// system has an address too, which is not to be called.
void* FunctionOfCaller(const std::string& name);

} // namespace scripted
