// The shipped library, loaded as a host loads it and used through its export alone.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "frame/values.h"
#include "kit/host/fakeRecord.h"
#include "kit/host/recordingHost.h"
#include "kit/siblings/dynamicLibrary.h"
#include "kit/siblings/scriptedSiblings.h"
#include "kit/text/logRecords.h"

namespace kit {

// Each test meets a library without a past: the first of a process loads the shipped file, each further one a copy of
// it. They stay loaded to the end of the process, as the library is meant to.
class ProductFixture : public testing::Test {
protected:
    void SetUp() override {
        siblings.Reset();
        product = LoadProduct();
        create = reinterpret_cast<CreateZelkObjectFunction>(product->Symbol("CreateZelkObject"));
        ASSERT_NE(create, nullptr);
    }

    // The receiver, made at the first call.
    IMordRev* Receiver() {
        void* out = nullptr;
        EXPECT_EQ(create(&IID_IMordRev, &out), RESULT_OK);
        return static_cast<IMordRev*>(out);
    }

    // A receiver that is initialised, started, reports to `sink` and logs; nothing of that is in the logs afterwards.
    IMordRev* RunningReceiver() {
        siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
        IMordRev* const receiver = Receiver();
        EXPECT_TRUE(receiver->Init(&host));
        receiver->SetReportSink(&sink);
        receiver->Start();
        siblings.TakeRecordTexts();
        siblings.calls.Take();
        calls.Take();
        return receiver;
    }

    CallLog calls;
    ScriptedSiblings& siblings = ScriptedSiblings::Instance();
    RecordingHost host{calls};
    RecordingSink sink{calls};
    DynamicLibrary* product = nullptr;
    CreateZelkObjectFunction create = nullptr;

private:
    static DynamicLibrary* LoadProduct();
};

} // namespace kit
