// What a person is told of a process that cannot be opened.
#include <gtest/gtest.h>

#include "output.h"
#include "refusals.h"

using mordinspect::WhyNotOpened;
using mordinspect::Words;

TEST(ProcessesThatDoNotOpen, AreToldInWordsWithTheError) {
    EXPECT_EQ(Words(WhyNotOpened(4294967292, 87)), "no process has the id 4294967292 (error 87)");
    EXPECT_EQ(Words(WhyNotOpened(4, 5)), "access to process 4 is denied (error 5)");
    EXPECT_EQ(Words(WhyNotOpened(12, 8)), "process 12 cannot be opened (error 8)");
}
