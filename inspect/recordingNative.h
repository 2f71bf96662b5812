// An access layer that passes requests on to another one, limits them and records their outcome.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "accessRecord.h"
#include "inspectionLimits.h"
#include "native/native.h"

namespace mordinspect {

// A request beyond a limit is not passed on: it fails with STATUS_OF_REFUSED_REQUEST or address 0, and so does every
// later one until Begin or Forget. Belongs to one thread. Recording can throw std::bad_alloc.
//
// It has more fields than Native, which has no virtual destructor: no owner may delete it as a Native.
class RecordingNative final : public Native {
public:
    // Called after each read of memory that was passed on, with the bytes read.
    using Watch = std::function<void(const Request&, const void* content)>;

    // `layer` serves `process`, and must outlive this object. The time limit starts here.
    RecordingNative(platform::Handle process, Native& layer, const Limits& limits);

    // Begins a part of the output: resets the counters, except for the time, and the record. `watch` is called until
    // the next Begin; it can be empty.
    void Begin(Watch watch = {});

    // Resets the record but not the counters.
    void Forget() { m_record = {}; }

    // Counts a request of `bytes` bytes that does not go through this layer. Returns false, and sets the limit of the
    // record, if it exceeds a limit.
    bool Admits(uint64_t bytes);

    // The record since the last Begin or Forget.
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

    // An inspection does not use these: they are passed on, neither counted nor recorded.
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
