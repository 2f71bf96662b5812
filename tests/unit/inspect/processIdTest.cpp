// Process ids on the command line.
#include <gtest/gtest.h>

#include "processId.h"

using mordinspect::ParseProcessId;

TEST(ProcessIds, AreDecimalNumbersOf32Bits) {
    EXPECT_EQ(ParseProcessId("0"), 0U);
    EXPECT_EQ(ParseProcessId("312"), 312U);
    EXPECT_EQ(ParseProcessId("4294967295"), 4294967295U);
    EXPECT_FALSE(ParseProcessId("4294967296"));
    EXPECT_FALSE(ParseProcessId("99999999999999999999"));
}

TEST(ProcessIds, AreDecimalWithZerosInFrontToo) {
    EXPECT_EQ(ParseProcessId("010000000"), 10000000U);
    EXPECT_EQ(ParseProcessId("0000000000000009"), 9U);
}

TEST(ProcessIds, HoldNothingElse) {
    for (const char* const text :
         {"", " ", "12 ", " 12", "+12", "-12", "0x138", "138h", "1'000", "1e3", "12.0", "pid"}) {
        EXPECT_FALSE(ParseProcessId(text)) << '"' << text << '"';
    }
}
