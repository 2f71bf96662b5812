// An addition to the allow list that runs out of memory leaves the list unchanged, its room included.
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "mordRev/src/allowList.h"

namespace {

constexpr size_t pairsOfTheFirstIndex = 8; // half of its 16 slots

// Short texts, which need no heap memory.
std::string Mid(size_t number) {
    return "M" + std::to_string(number);
}

class AllowListMemory : public testing::Test {
protected:
    // Fills the list up to the point where the next addition extends the pairs and the index.
    void SetUp() override {
        for (size_t number = 0; number < pairsOfTheFirstIndex; ++number) {
            list.Add("KEY", Mid(number));
        }
    }

    // Fails the `nth` allocation of an addition.
    void FailAnAddition(size_t nth) {
        const kit::FailingNew failing(nth);
        EXPECT_THROW(list.Add("KEY", Mid(pairsOfTheFirstIndex)), std::bad_alloc);
    }

    // The sizes that a successful addition allocates.
    std::vector<size_t> SizesOfAnAddition() {
        kit::AllocationCounter counter;
        list.Add("KEY", Mid(pairsOfTheFirstIndex));
        return counter.Sizes();
    }

    AllowList list;
};

TEST_F(AllowListMemory, AFailedAdditionKeepsThePairsThatTheListHas) {
    const AllowTable before = list.Table();
    for (size_t nth = 1; nth <= 2; ++nth) {
        FailAnAddition(nth);
        EXPECT_EQ(list.Table(), before) << nth;
    }
    list.Add("KEY", Mid(pairsOfTheFirstIndex));
    for (size_t number = 0; number <= pairsOfTheFirstIndex; ++number) {
        const std::string mid = Mid(number);
        const std::string_view mids[] = {mid};
        const std::string protocol = "KEY";
        const std::string* const match = list.Match(AllowQuery(protocol, mids));
        ASSERT_NE(match, nullptr) << mid;
        EXPECT_EQ(*match, mid);
    }
}

// Each failure would otherwise take a place among the pairs, until they have to be extended for nothing.
TEST_F(AllowListMemory, FailedAdditionsTakeNoRoom) {
    FailAnAddition(2); // the pairs are extended, the index is not
    const std::vector<size_t> once = SizesOfAnAddition();

    list.Clear();
    SetUp();
    FailAnAddition(2);
    for (size_t failure = 0; failure < 2 * pairsOfTheFirstIndex; ++failure) {
        FailAnAddition(1);
    }
    EXPECT_EQ(SizesOfAnAddition(), once);
}

} // namespace
