// The variant that a 32-bit caller chooses: by machine and caller, never by the target.
#include "native/chooseNative.h"

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "native/nativeWow64.h"
#include "native/x86Native.h"

namespace {

using namespace scripted;

class VariantChoice : public NativeFixture {
protected:
    template <typename Variant>
    bool Chosen() {
        const std::unique_ptr<Native> chosen = ChooseNative(process);
        const Native& variant = *chosen;
        return typeid(variant) == typeid(Variant);
    }
};

TEST_F(VariantChoice, OnA32BitMachineIsX86NativeWhateverTheCallerSays) {
    system.architecture = 0;
    for (const int32_t isWow64 : {0, 1}) {
        system.callerIsWow64 = isWow64;
        target->isWow64 = isWow64;
        EXPECT_TRUE(Chosen<x86Native>());
    }
    EXPECT_EQ(system.Count("IsWow64Process"), 0u);
}

TEST_F(VariantChoice, OfAWow64CallerIsNativeWow64ForTargetsOfBothWidths) {
    system.callerIsWow64 = 1;
    for (const int32_t isWow64 : {0, 1}) {
        target->isWow64 = isWow64;
        EXPECT_TRUE(Chosen<NativeWow64>());
    }
}

TEST_F(VariantChoice, OfEveryOtherCallerIsTheBase) {
    for (const int32_t flag : {0, 2, -1}) {
        system.callerIsWow64 = flag;
        EXPECT_TRUE(Chosen<Native>()) << flag;
    }
    system.callerIsWow64 = 1;
    system.callerWow64QueryFails = true;
    EXPECT_TRUE(Chosen<Native>());
}

TEST_F(VariantChoice, GoesByTheMachinesArchitectureBeing0Alone) {
    system.callerIsWow64 = 1;
    for (const uint16_t architecture : std::initializer_list<uint16_t>{6, 9, 12, 0xFFFF}) {
        system.architecture = architecture;
        EXPECT_TRUE(Chosen<NativeWow64>()) << architecture;
    }
}

TEST_F(VariantChoice, OnA32BitMachineEveryTargetCountsAsWow64) {
    system.architecture = 0;
    target->isWow64 = 0;
    const auto chosen = ChooseNative(process);
    EXPECT_TRUE(chosen->TargetIsWow64());
    EXPECT_TRUE(chosen->IsX86System());
}

} // namespace
