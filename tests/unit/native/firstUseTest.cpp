// The function table, which is loaded once in a process, used by several threads at the same moment. Each case needs
// a process of its own; meant to be run under ThreadSanitizer too.
#include <vector>

#include <gtest/gtest.h>

#include "kit/system/onThreads.h"
#include "native/native.h"
#include "native/nativeFunctionTable.h"
#include "unit/native/firstUseSystem.h"

namespace {

using firstUse::OnThreads;
using firstUse::threadCount;

TEST(FirstNative, OfEveryThreadHasTheWholeTableWhichIsLoadedOnce) {
    const auto statuses = OnThreads<NtStatus>([] {
        Native native(nullptr);
        return native.QuerySystemInformation(57, nullptr, 0, nullptr);
    });
    EXPECT_EQ(statuses, std::vector<NtStatus>(threadCount, firstUse::statusOfQueries));
    EXPECT_EQ(firstUse::namesAskedFor, 35);
    EXPECT_EQ(GetNativeFunctionTable().size(), 35U);
}

} // namespace
