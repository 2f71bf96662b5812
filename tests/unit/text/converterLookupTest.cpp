// The lookup of the converter, over a scripted system. Each case needs a separate process.
#include "kit/system/scriptedSystem.h"
#include "text/textConvert.h"

namespace {

using Calls = std::vector<std::string>;

class ConverterLookup : public kit::ScriptedSystemFixture {};

TEST_F(ConverterLookup, ZelkBaseIsAskedDirectlyAndOnce) {
    EXPECT_EQ(Utf8ToWide("a"), WIDE("a"));
    EXPECT_EQ(TakeCalls(), (Calls{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                                  "create ITextConverter"}));
    EXPECT_EQ(WideToUtf8(WIDE("a")), "a");
    EXPECT_EQ(Utf8ToWide("b"), WIDE("b"));
    EXPECT_EQ(TakeCalls(), Calls());
}

TEST_F(ConverterLookup, NullAndEmptyTextsLookForNothing) {
    Utf8ToWide(nullptr);
    Utf8ToWide("");
    WideToUtf8(nullptr);
    WideToUtf8(WIDE(""));
    EXPECT_EQ(TakeCalls(), Calls());
}

TEST_F(ConverterLookup, MissingModuleEndsTheSearchForTheRestOfTheProcess) {
    system.modules.erase("ZelkBase.dll");
    EXPECT_EQ(Utf8ToWide("a"), WIDE(""));
    EXPECT_EQ(TakeCalls(), Calls{"GetModuleHandleW(ZelkBase.dll)"});
    system.modules["ZelkBase.dll"] = kit::ScriptedSiblings::Factory();
    EXPECT_EQ(Utf8ToWide("a"), WIDE(""));
    EXPECT_EQ(WideToUtf8(WIDE("a")), "");
    EXPECT_EQ(TakeCalls(), Calls());
}

TEST_F(ConverterLookup, MissingFactoryEndsTheSearchForTheRestOfTheProcess) {
    system.modules["ZelkBase.dll"] = nullptr;
    EXPECT_EQ(WideToUtf8(WIDE("a")), "");
    EXPECT_EQ(TakeCalls(), (Calls{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"}));
    EXPECT_EQ(Utf8ToWide("a"), WIDE(""));
    EXPECT_EQ(TakeCalls(), Calls());
}

// Fills the pointer and says no.
uint32_t MORD_CDECL Grudging(const GUID* iid, void** out) {
    kit::ScriptedSiblings::Factory()(iid, out);
    return 0x80004002U;
}

TEST_F(ConverterLookup, FactoryThatFillsThePointerIsBelievedWhateverItReturns) {
    system.modules["ZelkBase.dll"] = Grudging;
    EXPECT_EQ(Utf8ToWide("a"), WIDE("a"));
}

} // namespace
