#include "inspection.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "moduleReads.h"
#include "native/remoteLayouts.h"
#include "native/scopedHandle.h"
#include "platform/platform.h"
#include "recordedTarget.h"
#include "refusals.h"

namespace mordinspect {

namespace {

constexpr uint32_t errorNoMoreFiles = 18;                                    // the normal end of a snapshot
const auto invalidHandle = reinterpret_cast<platform::Handle>(intptr_t{-1}); // from a failed snapshot

// Returns what `read` returns. Converts std::bad_alloc to the reason why `part` is missing.
template <typename Read>
auto WithoutThrowing(const char* part, const Read& read) {
    try {
        return read();
    } catch (const std::bad_alloc&) {
        decltype(read()) none{};
        none.refusal = Seen(part, "no memory left for it");
        return none;
    }
}

Reading<uint32_t> ReadParent(RecordedTarget& target) {
    target.Access().Begin();
    if (const uint32_t parent = target->GetParentProcessId(); parent != 0) {
        return {parent, {}};
    }
    return {std::nullopt, WhyNoParent(target.Access().Record())};
}

Reading<WideText> ReadString(RecordedTarget& target, ProcessParameterField field) {
    return WithoutThrowing("the text", [&]() -> Reading<WideText> {
        target.Access().Begin();
        if (const auto string = target->ReadParameterString(field)) {
            return {WideText(string->buffer.get()), {}};
        }
        return {std::nullopt, WhyNoString(target.Access().Record())};
    });
}

Module MakeModule(const ModuleData& module, const EntryReads& reads) {
    if (module.path.empty() && Failed(reads.entry)) {
        return {module.baseAddress, module.imageSize, {std::nullopt, ByStatus("the loader entry", reads.entry)}, false};
    }
    if (module.path.empty() && Failed(reads.name)) {
        return {module.baseAddress, module.imageSize, {std::nullopt, ByStatus("the path", reads.name)}, false};
    }
    const bool fillsBuffer = module.path.size() == moduleNameSize / sizeof(WideChar);
    const bool isCut = !module.path.empty() && (Failed(reads.name) || (fillsBuffer && reads.nameIsLonger));
    return {module.baseAddress, module.imageSize, {module.path, {}}, isCut};
}

Listing<Module> ReadModules(RecordedTarget& target, ModuleKind kind) {
    return WithoutThrowing("the list", [&]() -> Listing<Module> {
        ModuleReads reads(kind);
        target.Access().Begin([&](const Request& read, const void* content) { reads.Take(read, content); });
        TargetProcess::ModuleList list = target->ListModules(kind);
        const AccessRecord& record = target.Access().Record();
        if (record.limit && !list.empty()) {
            list.pop_back(); // the last entry may be incomplete
        }
        if (list.empty()) {
            return {std::nullopt, WhyNoModules(record), {}};
        }
        std::vector<Module> modules;
        for (size_t i = 0; i < list.size(); ++i) {
            modules.push_back(MakeModule(*list[i], reads.Entries().at(i)));
        }
        const bool isCut = record.limit || Failed(record.last->status);
        return {std::move(modules), {}, isCut ? std::optional(WhyNoMoreModules(record)) : std::nullopt};
    });
}

// Reads one thread. If a limit is reached meanwhile, the caller drops the result.
Thread ReadThread(RecordedTarget& target, uint32_t id) {
    RecordingNative& access = target.Access();
    access.Forget();
    if (!access.Admits(sizeof(platform::ThreadEntry))) {
        return {id, 0, {}};
    }
    try {
        if (const auto thread = target->ReadThread(id)) {
            return {id, thread->startAddress, {thread->path, {}}};
        }
    } catch (const std::out_of_range&) {
        constexpr auto step = "the file's device path ends within the name of a drive's device";
        return {id, 0, {std::nullopt, Seen(step, access.Record().mappedFile)}};
    }
    const uint32_t error = platform::GetLastError();
    return {id, 0, {std::nullopt, WhyNoThread(access.Record(), error)}};
}

// Appends the threads of the target. Returns the reason if the walk did not reach the end of the snapshot.
std::optional<Refusal> AppendThreads(RecordedTarget& target, platform::Handle snapshot, std::vector<Thread>& threads) {
    constexpr auto next = "the next thread";
    platform::ThreadEntry entry{};
    entry.dwSize = sizeof entry;
    for (bool more = platform::Thread32First(snapshot, &entry); more; more = platform::Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID != target->ProcessId()) {
            continue;
        }
        Thread thread = ReadThread(target, entry.th32ThreadID);
        if (const auto& limit = target.Access().Record().limit) {
            return ByLimit(next, *limit);
        }
        threads.push_back(std::move(thread));
    }
    const uint32_t error = platform::GetLastError();
    return error == errorNoMoreFiles ? std::nullopt : std::optional(ByError(next, error));
}

// Not TargetProcess::ListThreads, which omits threads without a file at their start address: all threads are shown
// here.
Listing<Thread> ReadThreads(RecordedTarget& target) {
    return WithoutThrowing("the list", [&]() -> Listing<Thread> {
        target.Access().Begin();
        const platform::Handle snapshot = platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPTHREAD_FLAG, 0);
        if (snapshot == nullptr || snapshot == invalidHandle) {
            return {std::nullopt, ByError("the snapshot of the system's threads", platform::GetLastError()), {}};
        }
        const ScopedHandle closed(snapshot);
        std::vector<Thread> threads;
        std::optional<Refusal> cut = AppendThreads(target, snapshot, threads);
        if (threads.empty()) {
            return {std::nullopt, cut ? *cut : Seen("the process's threads", "none in the system's list"), {}};
        }
        std::sort(threads.begin(), threads.end(), [](const Thread& a, const Thread& b) { return a.id < b.id; });
        return {std::move(threads), {}, std::move(cut)};
    });
}

} // namespace

Inspection Inspect(platform::Handle process, const Limits& limits) {
    RecordedTarget target(process, limits);
    return {target->ProcessId(),
            target->Access().TargetIsWow64() ? 32 : 64,
            ReadParent(target),
            ReadString(target, ImagePathName),
            ReadString(target, CommandLine),
            ReadString(target, CurrentDirectory),
            ReadModules(target, ModuleKind32),
            ReadModules(target, ModuleKind64),
            ReadThreads(target)};
}

Reading<std::vector<ProcessData>> ListAll() {
    RecordedTarget target(platform::GetCurrentProcess(), limitsOfProcessList);
    std::vector<ProcessData> processes;
    for (const auto& process : target->ListProcesses()) {
        processes.push_back(*process);
    }
    if (processes.empty()) {
        const uint32_t error = platform::GetLastError();
        return {std::nullopt, WhyNoProcesses(target.Access().Record(), error)};
    }
    std::sort(processes.begin(), processes.end(),
              [](const ProcessData& a, const ProcessData& b) { return a.processId < b.processId; });
    return {std::move(processes), {}};
}

} // namespace mordinspect
