// Reads of a target, and the queries with their replies in either layout.
#include <algorithm>
#include <cstring>

#include "kit/system/published/queryLayouts.h"
#include "kit/system/scriptedProcess/internals.h"

namespace scripted {

namespace {

// `work` delivers the answer; the script may put another in its place.
template <typename Work>
Answer Answered(const char* function, const Work& work) {
    const auto outcome = ScriptedOutcome(function);
    if (!outcome) {
        return work();
    }
    return {outcome->status, outcome->performs ? work().written : 0};
}

// A reply of a fixed size, which the buffer must have.
template <typename Reply>
Answer Deliver(const Reply& reply, void* buffer, uint64_t size) {
    if (size != sizeof reply) {
        return {lengthMismatch, 0};
    }
    std::memcpy(buffer, &reply, sizeof reply);
    return {0, sizeof reply};
}

const Region* RegionAt(const Process& process, uint64_t address) {
    const auto region = std::find_if(process.regions.begin(), process.regions.end(), [=](const Region& one) {
        return one.base <= address && address - one.base < one.size;
    });
    return region == process.regions.end() ? nullptr : &*region;
}

// The name of a mapped file: the string's header, and its text further on in the same reply.
template <typename P>
Answer DeliverName(const Text& file, void* buffer, uint64_t size) {
    const MappedNameReply& script = Instance().mappedName;
    published::UnicodeString<P> header{};
    char* const text = static_cast<char*>(buffer) + sizeof header;
    const uint64_t room = size - sizeof header;
    const size_t textSize = script.fillsReply ? static_cast<size_t>(room) : (file.size() + 1) * sizeof(WideChar);
    if (size < sizeof header + textSize) {
        return {lengthMismatch, 0};
    }
    const size_t length = file.size() * sizeof(WideChar);
    header.Length = script.length.value_or(static_cast<uint16_t>(length));
    header.MaximumLength = static_cast<uint16_t>(length + sizeof(WideChar));
    header.Buffer = static_cast<P>(script.address.value_or(reinterpret_cast<uintptr_t>(text)));
    std::memcpy(buffer, &header, sizeof header);
    for (size_t i = 0; i < textSize; ++i) { // over and over again where the reply is to be filled
        text[i] = reinterpret_cast<const char*>(file.c_str())[script.fillsReply ? i % length : i];
    }
    return {0, sizeof header + textSize};
}

} // namespace

Answer ReadTarget(const char* function, platform::Handle process, uint64_t address, void* destination, uint64_t size) {
    System& system = Instance();
    if (system.onRead) {
        system.onRead();
    }
    const auto work = [&]() -> Answer {
        const Process* const target = ProcessOf(process);
        if (target == nullptr) {
            return {invalidHandle, 0};
        }
        if (++system.reads > system.readLimit || (destination == nullptr && size != 0)) {
            return {accessViolation, 0};
        }
        const size_t count = target->memory.Read(address, destination, static_cast<size_t>(size));
        return {count == size ? 0 : (count == 0 ? accessViolation : partialCopy), count};
    };
    if (const auto atAddress = system.byAddress.find(address); atAddress != system.byAddress.end()) {
        return {atAddress->second.status, atAddress->second.performs ? work().written : 0};
    }
    if (const auto atRange = system.byRange.find({address, size}); atRange != system.byRange.end()) {
        return {atRange->second.status, atRange->second.performs ? work().written : 0};
    }
    return Answered(function, work);
}

template <typename P>
Answer QueryProcess(const char* function, platform::Handle process, uint32_t informationClass, void* buffer,
                    uint64_t size) {
    return Answered(function, [&]() -> Answer {
        const Process* const target = ProcessOf(process);
        if (target == nullptr) {
            return {invalidHandle, 0};
        }
        if (informationClass == 26) { // a class of 64-bit systems
            return Deliver(uint64_t{target->isWow64 == 1 ? target->peb32 : 0}, buffer, size);
        }
        published::ProcessBasicInformation<P> reply{};
        reply.PebBaseAddress = static_cast<P>(sizeof(P) == 4 ? target->peb32 : target->peb64);
        reply.UniqueProcessId = static_cast<P>(Instance().handles.at(process).id);
        reply.InheritedFromUniqueProcessId = static_cast<P>(target->parent);
        return Deliver(reply, buffer, size);
    });
}

template <typename P>
Answer QueryThread(const char* function, platform::Handle thread, uint32_t informationClass, void* buffer,
                   uint64_t size) {
    return Answered(function, [&]() -> Answer {
        const Thread* const found = ThreadOf(thread);
        if (found == nullptr) {
            return {invalidHandle, 0};
        }
        if (informationClass == 9) { // the start address has the width of the thread's process
            const bool is32Bit = sizeof(P) == 4 || Instance().processes.at(found->owner).isWow64 == 1;
            return is32Bit ? Deliver(static_cast<uint32_t>(found->start), buffer, size)
                           : Deliver(found->start, buffer, size);
        }
        published::ThreadBasicInformation<P> reply{};
        reply.TebBaseAddress = static_cast<P>(sizeof(P) == 4 ? found->teb32 : found->teb64);
        reply.ClientId = {static_cast<P>(found->owner), static_cast<P>(found->id)};
        return Deliver(reply, buffer, size);
    });
}

template <typename P>
Answer QueryMemory(const char* function, platform::Handle process, uint64_t address, uint32_t informationClass,
                   void* buffer, uint64_t size) {
    return Answered(function, [&]() -> Answer {
        const Process* const target = ProcessOf(process);
        if (target == nullptr) {
            return {invalidHandle, 0};
        }
        const Region* const region = RegionAt(*target, address);
        if (region == nullptr) {
            return {invalidAddress, 0};
        }
        if (informationClass == 2) {
            return region->file.empty() ? Answer{fileInvalid, 0} : DeliverName<P>(region->file, buffer, size);
        }
        published::MemoryBasicInformation<P> reply{};
        reply.BaseAddress = static_cast<P>(region->base);
        reply.AllocationBase = static_cast<P>(region->base);
        reply.RegionSize = static_cast<P>(region->size);
        return Deliver(reply, buffer, size);
    });
}

template Answer QueryProcess<uint32_t>(const char*, platform::Handle, uint32_t, void*, uint64_t);
template Answer QueryProcess<uint64_t>(const char*, platform::Handle, uint32_t, void*, uint64_t);
template Answer QueryThread<uint32_t>(const char*, platform::Handle, uint32_t, void*, uint64_t);
template Answer QueryThread<uint64_t>(const char*, platform::Handle, uint32_t, void*, uint64_t);
template Answer QueryMemory<uint32_t>(const char*, platform::Handle, uint64_t, uint32_t, void*, uint64_t);
template Answer QueryMemory<uint64_t>(const char*, platform::Handle, uint64_t, uint32_t, void*, uint64_t);

} // namespace scripted
