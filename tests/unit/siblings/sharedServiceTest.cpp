// Services shared by several threads.
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "unit/siblings/converterKit.h"
#include "unit/siblings/offeredServices.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

namespace {

class SharedServiceTest : public testing::TestWithParam<OfferedService> {};

INSTANTIATE_TEST_SUITE_P(All, SharedServiceTest, testing::ValuesIn(offered),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(SharedServiceTest, countsReferencesOfConcurrentThreads) {
    const SiblingLibrary library{std::string(GetParam().library)};
    const auto service = library.Make<ISmartUnknown>(GetParam().id);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&service] {
            for (int round = 0; round < 10000; ++round) {
                service->AddRef();
                service->Release();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(service->AddRef(), 2);
    EXPECT_EQ(service->Release(), 1);
}

TEST(SharedFactoryTest, createsServicesOnConcurrentThreads) {
    const SiblingLibrary zelkBase{std::string("ZelkBase")};
    const SiblingLibrary ferrocore{std::string("Ferrocore")};
    std::vector<int> left(4);
    std::vector<std::thread> threads;
    for (int& count : left) {
        threads.emplace_back([&] {
            for (int round = 0; round < 50; ++round) {
                for (const OfferedService& service : offered) {
                    const bool base = std::string(service.library) == "ZelkBase";
                    void* object = nullptr;
                    (base ? zelkBase : ferrocore).Factory()(&service.id, &object);
                    count += static_cast<ISmartUnknown*>(object)->Release();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(left, std::vector<int>(4)) << "each release drops the last reference";
}

TEST(SharedConverterTest, convertsOnConcurrentThreads) {
    const SiblingLibrary library{std::string("ZelkBase")};
    const auto service = library.Make<ITextConverter>(SID_TextConverter);
    ITextConverter& converter = *service.Get();
    std::vector<std::thread> threads;
    std::vector<int> wrong(4);
    for (size_t thread = 0; thread < wrong.size(); ++thread) {
        threads.emplace_back([&converter, &wrong, thread] {
            const std::string narrow =
                std::to_string(thread) + "a\xC3\xA4\xE4\xB8\x96\xF0\x9F\x98\x80" + std::string(thread * 100, 'x');
            const std::u16string wide = static_cast<char16_t>(u'0' + thread) +
                                        std::u16string(u"a\u00E4\u4E16\U0001F600") + std::u16string(thread * 100, u'x');
            for (int round = 0; round < 2000; ++round) {
                converter.AddRef();
                wrong[thread] += WideOf(converter, narrow) != wide || NarrowOf(converter, wide) != narrow;
                converter.Release();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4));
}

} // namespace

} // namespace siblingTest
