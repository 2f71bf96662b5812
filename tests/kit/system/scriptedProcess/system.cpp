#include "kit/system/scriptedProcess/system.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "kit/system/scriptedProcess/internals.h"

namespace scripted {

namespace {

System instance;

const System::Handle* Find(platform::Handle handle, System::Handle::Kind kind) {
    const auto found = instance.handles.find(handle);
    return found == instance.handles.end() || found->second.kind != kind ? nullptr : &found->second;
}

} // namespace

System& Instance() {
    return instance;
}

System& Reset() {
    instance = System{};
    return instance;
}

std::vector<std::string> System::TakeCalls() {
    return std::exchange(calls, {});
}

size_t System::Count(const std::string& beginning) const {
    return static_cast<size_t>(std::count_if(calls.begin(), calls.end(),
                                             [&](const std::string& call) { return call.starts_with(beginning); }));
}

platform::Handle NewHandle(System::Handle::Kind kind, uint32_t id) {
    static uintptr_t last = 0x100; // never given twice in a process, so that a late use of one shows
    last += 4;
    const auto handle = reinterpret_cast<platform::Handle>(last);
    instance.handles[handle] = {kind, id};
    return handle;
}

platform::Handle OpenProcessHandle(uint32_t processId) {
    return NewHandle(System::Handle::OfProcess, processId);
}

platform::Handle OpenThreadHandle(uint32_t threadId) {
    return NewHandle(System::Handle::OfThread, threadId);
}

Process* ProcessOf(platform::Handle handle) {
    const auto* const found = Find(handle, System::Handle::OfProcess);
    const auto process = found == nullptr ? instance.processes.end() : instance.processes.find(found->id);
    return process == instance.processes.end() ? nullptr : &process->second;
}

const Thread* ThreadOf(platform::Handle handle) {
    const auto* const found = Find(handle, System::Handle::OfThread);
    if (found == nullptr) {
        return nullptr;
    }
    const auto thread = std::find_if(instance.threads.begin(), instance.threads.end(),
                                     [=](const Thread& one) { return one.id == found->id; });
    return thread == instance.threads.end() ? nullptr : &*thread;
}

System::Handle* SnapshotOf(platform::Handle handle) {
    return const_cast<System::Handle*>(Find(handle, System::Handle::OfSnapshot));
}

std::string Name(platform::Handle handle) {
    if (handle == platform::GetCurrentProcess()) {
        return "self";
    }
    const auto found = instance.handles.find(handle);
    if (found == instance.handles.end()) {
        return Hex(reinterpret_cast<uintptr_t>(handle));
    }
    switch (found->second.kind) {
    case System::Handle::OfProcess:
        return "process " + std::to_string(found->second.id);
    case System::Handle::OfThread:
        return "thread " + std::to_string(found->second.id);
    default:
        return "snapshot";
    }
}

std::string Hex(uint64_t value) {
    char digits[20];
    std::snprintf(digits, sizeof digits, "0x%llx", static_cast<unsigned long long>(value));
    return digits;
}

std::string Pointer(const void* pointer, const char* name) {
    return pointer == nullptr ? "null" : name;
}

std::string Narrow(const WideChar* text) {
    std::string narrow;
    for (; *text != WideChar{}; ++text) {
        narrow += static_cast<char>(*text);
    }
    return narrow;
}

std::optional<Outcome> ScriptedOutcome(const char* function) {
    if (!instance.keepsCalls && instance.byCall.empty()) {
        return std::nullopt;
    }
    const unsigned number = ++instance.callCounts[function];
    const auto outcome = instance.byCall.find({function, number});
    return outcome == instance.byCall.end() ? std::nullopt : std::optional(outcome->second);
}

} // namespace scripted
