// A NativeWow64 with a 64-bit half behind it. A function of that half that could not be found at its first use stays
// missing for the life of the process: tests of that have to be alone in theirs.
#pragma once

#include <memory>

#include "kit/system/scriptedProcess/gateHalf.h"
#include "kit/system/scriptedProcess/nativeFixture.h"
#include "native/nativeWow64.h"

namespace scripted {

class Wow64Fixture : public NativeFixture {
protected:
    void SetUp() override {
        NativeFixture::SetUp();
        system.callerIsWow64 = 1;
        target->isWow64 = 1;
        half.Build(gate);
    }

    // A NativeWow64 on the target, its construction not among the calls.
    NativeWow64& Object() {
        m_object = std::make_unique<NativeWow64>(process);
        system.TakeCalls();
        return *m_object;
    }

    // The lines of calls without those that find the function.
    Lines TakeCallsBehindTheSearch() {
        Lines calls = system.TakeCalls();
        std::erase_if(calls, [](const std::string& call) {
            return call.starts_with("GateThreadBlock") || call.starts_with("GateCopyIn") ||
                   call.starts_with("GateCompare") || call.starts_with("GateCall(LdrGetProcedureAddress");
        });
        return calls;
    }

    static uint64_t Widened(const void* pointer) { return reinterpret_cast<uintptr_t>(pointer); }

    Gate& gate = ResetGate();
    GateHalf half;

private:
    std::unique_ptr<NativeWow64> m_object;
};

} // namespace scripted
