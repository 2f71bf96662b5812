#include "inspection.h"

#include <algorithm>

#include "native/chooseNative.h"
#include "native/scopedHandle.h"
#include "native/targetProcess.h"
#include "refusals.h"

namespace mordinspect {

namespace {

Reading<WideText> ReadString(TargetProcess& target, Native& native, ProcessParameterField field) {
    if (const auto string = target.ReadParameterString(field)) {
        return {WideText(string->buffer.get()), {}};
    }
    return {std::nullopt, WhyNoParameterString(native, field)};
}

Reading<std::vector<Module>> ReadModules(TargetProcess& target, Native& native, ModuleKind kind) {
    std::vector<Module> modules;
    for (const auto& module : target.ListModules(kind)) {
        modules.push_back({module->baseAddress, module->imageSize, module->path});
    }
    if (modules.empty()) {
        return {std::nullopt, WhyNoModules(native, kind)};
    }
    return {std::move(modules), {}};
}

// The library's list leaves out the threads that have no file behind their start: all are shown here.
Reading<std::vector<Thread>> ReadThreads(TargetProcess& target, Native& native) {
    const ScopedHandle snapshot(platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPTHREAD_FLAG, 0));
    std::vector<Thread> threads;
    platform::ThreadEntry entry{};
    entry.dwSize = sizeof entry;
    for (bool more = platform::Thread32First(snapshot.Get(), &entry); more;
         more = platform::Thread32Next(snapshot.Get(), &entry)) {
        if (entry.th32OwnerProcessID != target.ProcessId()) {
            continue;
        }
        const uint32_t id = entry.th32ThreadID;
        if (const auto thread = target.ReadThread(id)) {
            threads.push_back({id, thread->startAddress, {thread->path, {}}});
        } else {
            threads.push_back({id, 0, {std::nullopt, WhyNoThread(native, id)}});
        }
    }
    if (threads.empty()) {
        return {std::nullopt, Nothing("the system lists none")};
    }
    std::sort(threads.begin(), threads.end(), [](const Thread& a, const Thread& b) { return a.id < b.id; });
    return {std::move(threads), {}};
}

Reading<uint32_t> ReadParent(TargetProcess& target, Native& native) {
    if (const uint32_t parent = target.GetParentProcessId(); parent != 0) {
        return {parent, {}};
    }
    return {std::nullopt, WhyNoParent(native)};
}

} // namespace

Refusal Nothing(std::string step) {
    return {std::move(step), Refusal::Kind::none, 0};
}

Refusal ByStatus(std::string step, NtStatus status) {
    return {std::move(step), Refusal::Kind::status, static_cast<uint32_t>(status)};
}

Refusal ByError(std::string step, uint32_t error) {
    return {std::move(step), Refusal::Kind::error, error};
}

Inspection Inspect(platform::Handle process) {
    TargetProcess target(process, 0);
    const std::unique_ptr<Native> native = ChooseNative(process);
    return {target.ProcessId(),
            native->TargetIsWow64() ? 32 : 64,
            ReadParent(target, *native),
            ReadString(target, *native, ImagePathName),
            ReadString(target, *native, CommandLine),
            ReadString(target, *native, CurrentDirectory),
            ReadModules(target, *native, ModuleKind32),
            ReadModules(target, *native, ModuleKind64),
            ReadThreads(target, *native)};
}

Reading<std::vector<ProcessData>> ListAll() {
    const platform::Handle self = platform::GetCurrentProcess();
    std::vector<ProcessData> processes;
    for (const auto& process : TargetProcess(self, 0).ListProcesses()) {
        processes.push_back(*process);
    }
    if (processes.empty()) {
        return {std::nullopt, WhyNoProcesses(*ChooseNative(self))};
    }
    std::sort(processes.begin(), processes.end(),
              [](const ProcessData& a, const ProcessData& b) { return a.processId < b.processId; });
    return {std::move(processes), {}};
}

} // namespace mordinspect
