// SetProperty: what each key takes, and what is refused.
#include <cstring>

#include "unit/mordRev/lifecycleEvent.h"

namespace {

using Texts = std::vector<std::string>;
using kit::Error;

class LifecycleProperties : public LifecycleEventFixture {
protected:
    bool SetMid(const std::string& mid) {
        std::string text = mid;
        return receiver->SetProperty(PROP_MID, text.data(), 1);
    }
};

TEST_F(LifecycleProperties, AreRefusedBeforeInitEvenWithAValidKeyAndTheParameterErrorIsLogged) {
    siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    ASSERT_FALSE(receiver->Init(nullptr)); // the log is up, and there is no host
    TakeRecords();
    uint32_t word = MODE_EMERGENCY;
    std::string text = R"({"tcp":1})";
    EXPECT_FALSE(receiver->SetProperty(PROP_DEFENDER_MODE, &word, sizeof word));
    EXPECT_FALSE(receiver->SetProperty(PROP_EXCEPTION_MODE, &word, sizeof word));
    EXPECT_FALSE(receiver->SetProperty(PROP_ACTION_JSON, text.data(), 9));
    EXPECT_FALSE(receiver->SetProperty(PROP_MID, text.data(), 9));
    EXPECT_EQ(TakeRecords(), Texts(4, parameterError));
    EXPECT_EQ(Fields().Mode(), 3U);
    EXPECT_EQ(Fields().ExceptionMode(), 2U);
    EXPECT_EQ(Fields().Actions(), ActionTable());
    EXPECT_EQ(Fields().Mid(), "");
}

TEST_F(LifecycleProperties, ParameterErrorIsLoggedAtError) {
    MakeReady();
    receiver->SetProperty(PROP_MID, nullptr, 1);
    ASSERT_EQ(siblings.Records().size(), 1U);
    EXPECT_EQ(siblings.Records()[0].level, 35);
    EXPECT_EQ(siblings.Records()[0].text, parameterError);
}

TEST_F(LifecycleProperties, NullDataIsRefusedForEveryKey) {
    MakeReady();
    for (const uint32_t key : {6U, 8U, 9U, 20U, 77U}) {
        EXPECT_FALSE(receiver->SetProperty(key, nullptr, 4)) << key;
    }
    EXPECT_EQ(TakeRecords(), Texts(5, parameterError));
    EXPECT_EQ(Fields().Mode(), 3U);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
}

TEST_F(LifecycleProperties, ZeroSizeIsRefusedForEveryKey) {
    MakeReady();
    uint32_t word = 0x00000035; // "5" as text
    for (const uint32_t key : {6U, 8U, 9U, 20U, 77U}) {
        EXPECT_FALSE(receiver->SetProperty(key, &word, 0)) << key;
    }
    EXPECT_EQ(TakeRecords(), Texts(5, parameterError));
    EXPECT_EQ(Fields().Mode(), 3U);
    EXPECT_EQ(Fields().ExceptionMode(), 2U);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
}

TEST_F(LifecycleProperties, SizeThatIsNotZeroPlaysNoPart) {
    MakeReady();
    for (const uint32_t size : {1U, 2U, 4U, 0xFFFFFFFFU}) {
        uint32_t word = 0x12340000 + size;
        EXPECT_TRUE(receiver->SetProperty(PROP_DEFENDER_MODE, &word, size));
        EXPECT_EQ(Fields().Mode(), word) << "all four bytes are read";
        EXPECT_TRUE(receiver->SetProperty(PROP_EXCEPTION_MODE, &word, size));
        EXPECT_EQ(Fields().ExceptionMode(), word);
        std::string mid = "MID-" + std::to_string(size);
        EXPECT_TRUE(receiver->SetProperty(PROP_MID, mid.data(), size));
        EXPECT_EQ(Fields().Mid(), mid) << "up to its NUL";
        std::string action = R"({"t)" + std::to_string(size) + R"(":1})";
        EXPECT_TRUE(receiver->SetProperty(PROP_ACTION_JSON, action.data(), size));
        EXPECT_EQ(Fields().Actions(), (ActionTable{{"t" + std::to_string(size), true}}));
    }
}

TEST_F(LifecycleProperties, ModesOutsideTheTablesAreStored) {
    MakeReady();
    for (const uint32_t mode : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 77U, 0xFFFFFFFFU}) {
        SetMode(mode);
        EXPECT_EQ(Fields().Mode(), mode);
        EXPECT_NE(Fields().ExceptionMode(), 77U);
    }
    for (const uint32_t mode : {0U, 1U, 2U, 3U, 77U, 0xFFFFFFFFU}) {
        SetExceptionMode(mode);
        EXPECT_EQ(Fields().ExceptionMode(), mode);
        EXPECT_EQ(Fields().Mode(), 0xFFFFFFFFU);
    }
    EXPECT_EQ(TakeRecords(), Texts()) << "with nothing logged";
}

TEST_F(LifecycleProperties, ModeNeedNotBeAligned) {
    MakeReady();
    const uint32_t mode = 0x12345678;
    alignas(uint32_t) unsigned char bytes[sizeof mode + 1];
    std::memcpy(bytes + 1, &mode, sizeof mode);
    EXPECT_TRUE(receiver->SetProperty(PROP_DEFENDER_MODE, bytes + 1, sizeof mode));
    EXPECT_EQ(Fields().Mode(), mode);
    EXPECT_TRUE(receiver->SetProperty(PROP_EXCEPTION_MODE, bytes + 1, sizeof mode));
    EXPECT_EQ(Fields().ExceptionMode(), mode);
}

TEST_F(LifecycleProperties, MachineIdIsReplacedAndCopied) {
    MakeReady();
    char mid[] = "gr\xC3\xBC\xC3\x9F";
    EXPECT_TRUE(receiver->SetProperty(PROP_MID, mid, sizeof mid));
    mid[0] = 'X';
    EXPECT_EQ(Fields().Mid(), "gr\xC3\xBC\xC3\x9F");
    EXPECT_TRUE(SetMid("NEXT"));
    EXPECT_EQ(Fields().Mid(), "NEXT");
    EXPECT_EQ(TakeRecords(), Texts());
    Handle();
    EXPECT_NE(calls.Take()[0].find(",NEXT)"), std::string::npos) << "it goes with the next query";
}

TEST_F(LifecycleProperties, EmptyMachineIdIsRefusedWithARecordAndTheOldOneStays) {
    MakeReady();
    EXPECT_FALSE(SetMid(""));
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    ASSERT_EQ(siblings.Records().size(), 1U);
    EXPECT_EQ(siblings.Records()[0].level, 35);
    EXPECT_EQ(TakeRecords(), Texts{Error("mordRev.cpp CMordRecv::SetProperty", "set mid fail")});
}

TEST_F(LifecycleProperties, MachineIdThatBeginsWithANulIsEmpty) {
    MakeReady();
    EXPECT_FALSE(SetMid(std::string("\0A", 2)));
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
}

TEST_F(LifecycleProperties, UnknownKeysAreRefusedWithNothingLogged) {
    MakeReady();
    uint32_t word = MODE_EMERGENCY;
    for (const uint32_t key : {0U, 1U, 5U, 7U, 10U, 19U, 21U, 0x80000008U, 0xFFFFFFFFU}) {
        EXPECT_FALSE(receiver->SetProperty(key, &word, sizeof word)) << key;
    }
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_EQ(Fields().Mode(), 3U);
    EXPECT_EQ(Fields().ExceptionMode(), 2U);
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(Fields().Actions(), ActionTable());
}

TEST_F(LifecycleProperties, ActionDocumentGivesWhatItsParserReturns) {
    MakeReady();
    EXPECT_TRUE(SetAction(R"({"tcp":1,"udp":0})"));
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"tcp", true}, {"udp", false}}));
    TakeRecords();
    EXPECT_FALSE(SetAction("no json"));
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"tcp", true}, {"udp", false}}));
    EXPECT_EQ(TakeErrors(),
              Texts{Error("actionTable.cpp CMordRecv::ParseActionJson", "action json is invalid json format")});
    EXPECT_FALSE(SetAction("{}"));
    EXPECT_EQ(Fields().Actions(), ActionTable());
}

TEST_F(LifecycleProperties, CanBeSetAfterUninit) {
    MakeReady();
    receiver->Uninit();
    SetMode(MODE_EMERGENCY);
    SetExceptionMode(EXCEPTION_ALLOW);
    EXPECT_TRUE(SetMid("B"));
    EXPECT_TRUE(SetAction(R"({"tcp":1})"));
    EXPECT_EQ(Fields().Mode(), MODE_EMERGENCY);
    EXPECT_EQ(Fields().ExceptionMode(), EXCEPTION_ALLOW);
    EXPECT_EQ(Fields().Mid(), "B");
    EXPECT_FALSE(Fields().Inited());
}

TEST_F(LifecycleProperties, CanBeSetAfterAFailedSecondInit) {
    MakeReady();
    receiver->Uninit();
    ASSERT_FALSE(receiver->Init(nullptr));
    SetMode(MODE_EMERGENCY);
    EXPECT_EQ(Fields().Mode(), MODE_EMERGENCY) << "the former host stays, and that is what counts";
}

} // namespace
