// A call on 32-bit Windows that measures what the callee does to stack and registers.
#pragma once

#include <cstdint>

namespace edge {

// Laid out as measuredCallX86.S reads it: nine words.
struct MeasuredCall {
    const void* function;
    void* object;              // goes into ECX
    const uint32_t* arguments; // pushed from the last to the first
    uint32_t count;
    uint32_t offset;  // 0, 4, 8 or 12: how far the stack is from a border of 16 bytes before the first push
    uint32_t result;  // EAX afterwards
    int32_t removed;  // bytes that the callee took from the stack beside its return address
    uint32_t changed; // how many of EBX, ESI, EDI and EBP the callee did not give back as they were
    uint32_t flags;   // EFLAGS afterwards
};
static_assert(sizeof(MeasuredCall) == 36, "nine words");

// One thread at a time.
extern "C" void MakeMeasuredCall(MeasuredCall* call);

} // namespace edge
