// The one export, of the shipped library.
#include <atomic>
#include <set>
#include <thread>

#include "kit/host/productFixture.h"

namespace {

using Calls = std::vector<std::string>;

class CreateZelkObject : public kit::ProductFixture {};

TEST_F(CreateZelkObject, LoadingTheLibraryDoesNothing) {
    EXPECT_EQ(siblings.calls.Take(), Calls());
}

TEST_F(CreateZelkObject, TwoCallsGiveTheSamePointer) {
    void* first = nullptr;
    void* second = nullptr;
    EXPECT_EQ(create(&IID_IMordRev, &first), RESULT_OK);
    EXPECT_EQ(create(&IID_IMordRev, &second), RESULT_OK);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, first);
}

TEST_F(CreateZelkObject, CreationCallsNothing) {
    Receiver();
    EXPECT_EQ(siblings.calls.Take(), Calls());
}

TEST_F(CreateZelkObject, NeitherRefusalNorCreationLogsWhenTheLogIsUp) {
    IMordRev* const receiver = RunningReceiver();
    void* out = nullptr;
    EXPECT_EQ(create(&IID_IMordRevSecond, &out), RESULT_NO_INTERFACE);
    EXPECT_EQ(create(&SID_LogWriter, &out), RESULT_NO_INTERFACE);
    EXPECT_EQ(create(&IID_IMordRev, &out), RESULT_OK);
    EXPECT_EQ(receiver->QueryInterface(&SID_LogWriter, &out), RESULT_NO_INTERFACE);
    EXPECT_EQ(siblings.RecordTexts(), Calls());
    EXPECT_EQ(siblings.calls.Take(), Calls());
}

TEST_F(CreateZelkObject, SecondIdentifierIsRefusedAtTheExportThoughTheObjectKnowsIt) {
    void* out = this;
    EXPECT_EQ(create(&IID_IMordRevSecond, &out), RESULT_NO_INTERFACE);
    EXPECT_EQ(out, this);
    IMordRev* const receiver = Receiver();
    EXPECT_EQ(receiver->QueryInterface(&IID_IMordRevSecond, &out), RESULT_OK);
    EXPECT_EQ(out, receiver);
    EXPECT_EQ(create(&IID_IMordRevSecond, &out), RESULT_NO_INTERFACE) << "also when the object is there";
    EXPECT_EQ(out, receiver);
}

TEST_F(CreateZelkObject, IdentifierThatDiffersInAnyOneByteIsRefusedAndLeavesTheOutPointer) {
    for (size_t i = 0; i < sizeof(GUID); ++i) {
        GUID other = IID_IMordRev;
        reinterpret_cast<unsigned char*>(&other)[i] ^= 1;
        void* out = this;
        EXPECT_EQ(create(&other, &out), RESULT_NO_INTERFACE) << "byte " << i;
        EXPECT_EQ(out, this) << "byte " << i;
    }
    EXPECT_EQ(siblings.calls.Take(), Calls());
}

TEST_F(CreateZelkObject, ObjectWorksAfterAnyNumberOfReleases) {
    IMordRev* const receiver = Receiver();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(receiver->Release(), 1);
    }
    EXPECT_EQ(receiver->AddRef(), 2);
    EXPECT_TRUE(receiver->Init(&host));
    uint32_t mode = MODE_EMERGENCY;
    EXPECT_TRUE(receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode));
    kit::FakeRecord event;
    kit::FakeRecord rule = kit::MakeRule("G", "tcp");
    IEventRecord* rules[] = {&rule};
    uint32_t reply = 77;
    EXPECT_TRUE(receiver->HandleEvent(&event, rules, 1, &reply));
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(receiver->Release(), 1);
    EXPECT_EQ(receiver->AddRef(), 2);
    EXPECT_EQ(Receiver(), receiver);
}

TEST_F(CreateZelkObject, QueryWithAnUnknownIdentifierLeavesTheOutPointer) {
    IMordRev* const receiver = Receiver();
    void* out = this;
    EXPECT_EQ(receiver->QueryInterface(&SID_LogWriter, &out), RESULT_NO_INTERFACE);
    EXPECT_EQ(out, this);
}

TEST_F(CreateZelkObject, ConcurrentFirstCallersAllGetTheOneObject) {
    constexpr int callers = 16;
    std::atomic<int> ready{0};
    std::vector<void*> out(callers);
    std::vector<std::thread> threads;
    for (int i = 0; i < callers; ++i) {
        threads.emplace_back([&, i] {
            ++ready;
            while (ready < callers) {
                std::this_thread::yield();
            }
            create(&IID_IMordRev, &out[static_cast<size_t>(i)]);
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::set<void*>(out.begin(), out.end()), std::set<void*>{Receiver()});
}

} // namespace
