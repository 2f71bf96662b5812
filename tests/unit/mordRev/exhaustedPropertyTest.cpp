// Memory that runs out while a property is set, and the operations that need none.
#include "unit/mordRev/exhaustedReceiver.h"

namespace {

using namespace exhausted;

class ExhaustedProperty : public ExhaustedMemory {};

TEST_F(ExhaustedProperty, OfTheMachineIdKeepsTheOldOne) {
    const std::string old = longText + "mid";
    std::string mid = longText + longText + "another";
    Sweep([&] { receiver->SetProperty(PROP_MID, mid.data(), 1); },
          [&] {
              Fields().Mid() = old;
              Fields().Mid().shrink_to_fit();
          },
          [&](const Failure& failure) {
              ExpectThrown(failure);
              EXPECT_EQ(Fields().Mid(), old);
              ExpectTheKnownEventDecided();
          });
    EXPECT_EQ(Fields().Mid(), mid);
}

TEST_F(ExhaustedProperty, OfARefusalChangesNothing) {
    LogFileEnabled = true;
    std::string empty;
    const auto sweep = [&](void* data, uint32_t size) {
        Sweep([&] { receiver->SetProperty(PROP_MID, data, size); }, [] {},
              [&](const Failure&) {
                  EXPECT_EQ(Fields().Mid(), longText + "mid");
                  ExpectTheKnownEventDecided();
              });
    };
    sweep(empty.data(), 1); // an empty machine id
    sweep(nullptr, 1);
    sweep(empty.data(), 0);
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

TEST_F(ExhaustedProperty, OfOperationsThatNeedNoMemoryIsNotNoticed) {
    uint32_t mode = MODE_ALLOW_AFTER_DECISION;
    void* out = nullptr;
    {
        const kit::FailingAllocations failing(1, true);
        EXPECT_TRUE(receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode));
        EXPECT_TRUE(receiver->SetProperty(PROP_EXCEPTION_MODE, &mode, sizeof mode));
        EXPECT_FALSE(receiver->SetProperty(7, &mode, sizeof mode));
        EXPECT_TRUE(receiver->GetProperty(1, 2, 3));
        EXPECT_FALSE(receiver->Stop());
        EXPECT_TRUE(receiver->Start());
        EXPECT_TRUE(receiver->SetReportSink(nullptr));
        EXPECT_TRUE(receiver->SetReportSink(&countingSink));
        EXPECT_TRUE(receiver->ClearAllowList());
        EXPECT_TRUE(receiver->Init(&countingHost));
        EXPECT_TRUE(receiver->Uninit());
        EXPECT_EQ(receiver->AddRef(), 2);
        EXPECT_EQ(receiver->QueryInterface(&IID_IMordRevSecond, &out), RESULT_OK);
        EXPECT_EQ(receiver->Release(), 1);
        EXPECT_EQ(failing.Failed(), kit::AllocationKind::None);
    }
    EXPECT_EQ(out, static_cast<IMordRev*>(receiver.get()));
    EXPECT_EQ(Fields().Mode(), mode);
    EXPECT_EQ(Fields().ExceptionMode(), mode);
    SetMode(MODE_ACTION_TABLE);
    ExpectTheKnownEventDecided();
}

} // namespace
