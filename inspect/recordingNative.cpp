#include "recordingNative.h"

#include <utility>

#include "mappedName.h"
#include "native/ntFunctions.h"
#include "native/remoteLayouts.h"
#include "pebSteps.h"

namespace mordinspect {

RecordingNative::RecordingNative(platform::Handle process, Native& layer, const Limits& limits)
    : Native(process, layer.IsX86System()), m_layer(layer), m_limits(limits),
      m_end(std::chrono::steady_clock::now() + limits.time) {}

void RecordingNative::Begin(Watch watch) {
    m_watch = std::move(watch);
    m_reads = 0;
    m_bytes = 0;
    m_record = {};
}

bool RecordingNative::Admits(uint64_t bytes) {
    if (m_record.limit) {
        return false;
    }
    if (m_reads == m_limits.reads) {
        m_record.limit = std::to_string(m_limits.reads) + " reads";
    } else if (bytes > m_limits.bytes - m_bytes) {
        m_record.limit = std::to_string(m_limits.bytes) + " bytes";
    } else if (std::chrono::steady_clock::now() >= m_end) {
        m_record.limit = std::to_string(m_limits.time.count()) + " seconds";
    } else {
        ++m_reads;
        m_bytes += bytes;
        return true;
    }
    return false;
}

void RecordingNative::Record(Step step, NtStatus status) {
    const bool again = m_record.last && m_record.last->step == step;
    m_record.last = Request{step, again ? m_record.last->number + 1 : 1, status};
    if (Failed(status) && !m_record.firstFailed) {
        m_record.firstFailed = m_record.last;
    }
}

bool RecordingNative::AdmitsStep(Step step, uint64_t bytes) {
    const bool refusedBefore = m_record.limit.has_value();
    if (Admits(bytes)) {
        return true;
    }
    if (!refusedBefore) {
        Record(step, STATUS_OF_REFUSED_REQUEST);
    }
    return false;
}

template <typename Work>
NtStatus RecordingNative::Recorded(Step step, uint64_t bytes, const Work& work) {
    if (!AdmitsStep(step, bytes)) {
        return STATUS_OF_REFUSED_REQUEST;
    }
    const NtStatus status = work();
    Record(step, status);
    return status;
}

// Derives the outcome from what the operation leaves behind, since it returns only an address: the statuses of its
// system calls (pebSteps.h) and the last-status value of this thread, where ReadProcessMemory leaves a failed block
// read and x86Native a refusal.
template <typename Work>
uint64_t RecordingNative::RecordedPeb(uint64_t bytes, const Work& work) {
    if (!AdmitsStep(Step::pebAddress, bytes)) {
        return 0;
    }
    const PebSteps steps;
    platform::SetLastStatusValue(STATUS_OF_SUCCESS);
    const uint64_t address = work();
    const NtStatus left = StatusFromWord(platform::LastStatusValue());
    if (steps.Read()) {
        Record(Step::peb, *steps.Read());
    } else if (steps.Query() && (Failed(*steps.Query()) || address == 0)) {
        Record(Step::pebAddress, *steps.Query());
    } else if (address != 0) {
        Record(Step::peb, left);
    } else {
        Record(left == STATUS_OF_SUCCESS ? Step::noPeb32 : Step::pebAddress, left);
    }
    return address;
}

NtStatus RecordingNative::ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead) {
    if (!AdmitsStep(Step::memory, size)) {
        return STATUS_OF_REFUSED_REQUEST;
    }
    const NtStatus status = m_layer.ReadMemory(address, destination, size, bytesRead);
    Record(Step::memory, status);
    if (m_watch) {
        m_watch(*m_record.last, destination);
    }
    return status;
}

NtStatus RecordingNative::QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                                  uint32_t* returnedLength) {
    return Recorded(Step::processInformation, size,
                    [&] { return m_layer.QueryProcessInformation(informationClass, buffer, size, returnedLength); });
}

NtStatus RecordingNative::QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                                 uint64_t size) {
    return Recorded(Step::threadInformation, size,
                    [&] { return m_layer.QueryThreadInformation(thread, informationClass, buffer, size); });
}

NtStatus RecordingNative::QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) {
    const Step step =
        informationClass == MemoryMappedFilenameInformationClass ? Step::mappedFile : Step::memoryInformation;
    const NtStatus status =
        Recorded(step, size, [&] { return m_layer.QueryVirtualMemory(address, informationClass, buffer, size); });
    if (step == Step::mappedFile && !Failed(status)) {
        m_record.mappedFile = MappedName(buffer, static_cast<size_t>(size), IsX86System());
    }
    return status;
}

NtStatus RecordingNative::QuerySystemInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                                 uint32_t* returnedLength) {
    return Recorded(Step::systemInformation, size,
                    [&] { return m_layer.QuerySystemInformation(informationClass, buffer, size, returnedLength); });
}

uint64_t RecordingNative::ReadPeb64(void* destination) {
    return RecordedPeb(Bits64::pebSize, [&] { return m_layer.ReadPeb64(destination); });
}

uint64_t RecordingNative::ReadPeb32(void* destination) {
    return RecordedPeb(Bits32::pebSize, [&] { return m_layer.ReadPeb32(destination); });
}

NtStatus RecordingNative::GetThreadContext32(platform::Handle thread, void* context) {
    return m_layer.GetThreadContext32(thread, context);
}

NtStatus RecordingNative::GetThreadContext64(platform::Handle thread, void* context) {
    return m_layer.GetThreadContext64(thread, context);
}

uint64_t RecordingNative::ReadTeb64(platform::Handle thread, void* destination) {
    return m_layer.ReadTeb64(thread, destination);
}

uint64_t RecordingNative::ReadTeb32(platform::Handle thread, void* destination) {
    return m_layer.ReadTeb32(thread, destination);
}

} // namespace mordinspect
