// The entry of the library carries no logic: TRUE for every reason, and nothing else.
#include <gtest/gtest.h>

#include <windows.h>

#include "kit/siblings/scriptedSiblings.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace {

TEST(LibraryEntry, ReturnsTrueForEveryReasonAndCallsNothing) {
    auto& siblings = kit::ScriptedSiblings::Instance();
    siblings.Reset();
    for (const DWORD reason : {DLL_PROCESS_ATTACH, DLL_THREAD_ATTACH, DLL_THREAD_DETACH, DLL_PROCESS_DETACH, 77}) {
        EXPECT_EQ(DllMain(nullptr, reason, nullptr), TRUE) << reason;
    }
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>());
}

} // namespace
