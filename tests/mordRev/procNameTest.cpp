#include "mordRev/src/procName.h"

#include <gtest/gtest.h>

namespace {

TEST(ProcName, IsWhatStandsBehindTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(ExtractProcName("c:\\dir\\client.exe"), "client.exe");
    EXPECT_EQ(ExtractProcName("/usr/bin/client"), "client");
    EXPECT_EQ(ExtractProcName("c:\\a/b.exe"), "b.exe");
    EXPECT_EQ(ExtractProcName("c:/a\\b.exe"), "b.exe");
}

TEST(ProcName, IsTheWholePathWithoutASeparator) {
    EXPECT_EQ(ExtractProcName("System"), "System");
}

TEST(ProcName, IsEmptyForAnEmptyPathAndBehindASeparatorAtTheEnd) {
    EXPECT_EQ(ExtractProcName(""), "");
    EXPECT_EQ(ExtractProcName("c:\\dir\\"), "");
    EXPECT_EQ(ExtractProcName("/"), "");
}

} // namespace
