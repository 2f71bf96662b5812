// 64-bit code for tests of the gate (functions64.S), which a test copies into memory of its own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// What the recorder records at its entry, and the state that it leaves.
struct Record64 {
    uint64_t arguments[6]; // the four registers, and the first two words behind the home space
    uint64_t stack;        // RSP
    uint64_t flags;
    uint16_t fs;
    uint16_t ss;
    uint16_t cs;
    uint16_t unused;
    uint64_t calls;
    uint32_t sseControl;
    uint16_t x87Control;
    uint16_t unused2;
    uint32_t newSseControl; // 0: it changes neither control word nor the direction flag; otherwise it sets that flag
    uint16_t newX87Control;
    uint16_t unused3;
};
constexpr uint64_t recorderResult = 0x123456789ABCDEF0;

// The state of a thread around a call of the gate, as CallMarked sets and finds it.
struct MarkedState {
    uint32_t ebx, esi, edi, ebp, esp;
    uint32_t flags;
    uint16_t fs, ss, ds, es, gs, cs;
    uint16_t x87Control;
    uint16_t x87Status;
    uint32_t sseControl;
    double x87Stack[3]; // the top first
    uint64_t result;
};

extern "C" {

// Position-independent 64-bit code, from begin to end. Its last bytes are the Record64 that it fills.
extern const char Recorder64Begin[];
extern const char Recorder64End[];

// Sets registers and floating-point state to known values, notes them in `before`, calls the C function `routine` with
// the `count` words as its arguments, and notes them, with its result, in `after`. The stack pointer at the call lies
// `misalignment` bytes, a multiple of 4 below 16, above a 16-byte boundary.
void CallMarked(const void* routine, const uint32_t* words, uint32_t count, uint32_t misalignment, MarkedState* before,
                MarkedState* after);
}

struct MarkedCall {
    MarkedState before{};
    MarkedState after{};
};

// A call of GateCall with `count` of the values; all six stand on the stack.
MarkedCall CallGateMarked(uint64_t function, int32_t count, const std::array<uint64_t, 6>& values,
                          uint32_t misalignment);

// A copy of the recorder in executable memory below 4 GiB, with a record of its own.
class Recorder64 {
public:
    Recorder64();
    ~Recorder64();
    Recorder64(const Recorder64&) = delete;
    Recorder64& operator=(const Recorder64&) = delete;

    uint64_t Address() const { return reinterpret_cast<uintptr_t>(m_code); }
    const Record64& Record() const;

    // From the next call on it leaves these control words and the direction flag set, which a real 64-bit function
    // must not do.
    void ChangeState(uint32_t sseControl, uint16_t x87Control);

private:
    char* m_code;
};
