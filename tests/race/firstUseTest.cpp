// Objects that are created once in a process, requested by several threads at the same moment.
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "kit/host/productFixture.h"
#include "kit/text/startLine.h"
#include "race/directSiblings.h"
#include "text/textConvert.h"

namespace {

constexpr size_t threadCount = 8;

// Runs `step` on several threads from the same moment on, with the number of the thread.
template <typename Step>
void AtOnce(const Step& step) {
    kit::StartLine start(threadCount);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([&start, &step, i] {
            start.ArriveAndWait();
            step(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(FirstUse, ConverterIsFoundByEveryThread) {
    race::UseDirectSiblings(false);
    std::vector<std::basic_string<WideChar>> texts(threadCount);
    AtOnce([&texts](size_t i) { texts[i] = Utf8ToWide("text"); });
    EXPECT_EQ(texts, (std::vector<std::basic_string<WideChar>>(threadCount, WIDE("text"))));
}

class FirstUseOfTheProduct : public kit::ProductFixture {};

TEST_F(FirstUseOfTheProduct, EveryThreadGetsTheSameObject) {
    std::vector<void*> objects(threadCount);
    AtOnce([this, &objects](size_t i) { create(&IID_IMordRev, &objects[i]); });
    EXPECT_NE(objects[0], nullptr);
    EXPECT_EQ(objects, std::vector<void*>(threadCount, objects[0]));
}

} // namespace
