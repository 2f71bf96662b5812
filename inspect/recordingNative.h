// A variant of the access layer that passes all requests on to another one, within limits, and records how they ended.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "accessRecord.h"
#include "inspectionLimits.h"
#include "native/native.h"

namespace mordinspect {

// A request beyond a limit is not passed on: it fails, and so does each one after it until Begin or Forget.
//
// It has fields of its own, and a Native has no virtual destructor: no owner may delete it as a Native.
class RecordingNative final : public Native {
public:
    // Sees each read of memory that was passed on, with what it delivered.
    using Watch = std::function<void(const Request&, const void* content)>;

    // `layer` serves `process` and outlives this object.
    RecordingNative(platform::Handle process, Native& layer, const Limits& limits);

    // Begins a part: counts anew, but for the time, and forgets the record of the part before.
    void Begin(Watch watch = {});

    // Forgets the record alone: what was counted still counts.
    void Forget() { m_record = {}; }

    // Counts a request that does not go through the layer. False beyond a limit.
    bool Admits(uint64_t bytes);

    const AccessRecord& Record() const { return m_record; }

    NtStatus ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead) override;
    NtStatus QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                     uint32_t* returnedLength) override;
    NtStatus QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                    uint64_t size) override;
    NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) override;
    NtStatus QuerySystemInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                    uint32_t* returnedLength) override;
    uint64_t ReadPeb64(void* destination) override;
    uint64_t ReadPeb32(void* destination) override;

    // No part of an inspection makes these: they are passed on, and neither counted nor recorded.
    NtStatus GetThreadContext32(platform::Handle thread, void* context) override;
    NtStatus GetThreadContext64(platform::Handle thread, void* context) override;
    uint64_t ReadTeb64(platform::Handle thread, void* destination) override;
    uint64_t ReadTeb32(platform::Handle thread, void* destination) override;

private:
    template <typename Work>
    NtStatus Recorded(Step step, uint64_t bytes, const Work& work);
    template <typename Work>
    uint64_t RecordedPeb(uint64_t bytes, const Work& work);
    bool AdmitsStep(Step step, uint64_t bytes);
    void Record(Step step, NtStatus status);

    Native& m_layer;
    const Limits m_limits;
    const std::chrono::steady_clock::time_point m_end;
    Watch m_watch;
    uint32_t m_reads = 0;
    uint64_t m_bytes = 0;
    AccessRecord m_record;
};

} // namespace mordinspect
