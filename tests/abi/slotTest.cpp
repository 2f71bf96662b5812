// The receiver's operations, called by slot, and what they call in the tables of host and siblings.
#include <string>

#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/fakeHost.h"

namespace {

using namespace edge;

const char* const allowList = R"({"mid_list": [{"mid": "MID-7", "protocol": ["TYPE-1", "GUID-2"]}]})";
const char* const answer = R"({"GUID-1": {"value": 1, "mid": {}}, "GUID-2": {"value": 1, "mid": {"MID-7": 0}}})";

const NamedValue eventValues[] = {
    {"flags", nullptr, 0x10},
    {"pid", nullptr, 4},
    {"remote_addr_ip", "10.0.0.2", 0},
    {"remote_addr_port", nullptr, 49152},
    {"local_addr_ip", "10.0.0.1", 0},
    {"local_addr_port", nullptr, 445},
    {"net_drv", nullptr, -0x123456789LL},
};
const NamedValue firstRuleValues[] = {{"guid", "GUID-1", 0}, {"type", "TYPE-1", 0}};
const NamedValue secondRuleValues[] = {{"guid", "GUID-2", 0}, {"type", "web", 0}};

const std::string machineId = "MID-\u00e4\u3066"; // the answer of the fake machine id service

class AbiSlots : public ::testing::Test {
protected:
    void SetUp() override { LoadSiblings(); }

    // An initialised, started receiver with a report sink, and an empty journal.
    void MakeReady() {
        ASSERT_TRUE(slots->Init(receiver, &host.host));
        ASSERT_TRUE(slots->Start(receiver));
        ASSERT_TRUE(slots->SetReportSink(receiver, &sink.sink));
        Journal();
    }

    uint32_t Handle() {
        uint32_t reply = 77;
        result = slots->HandleEvent(receiver, &event.record, rules, 2, &reply);
        return reply;
    }

    Receiver* const receiver = TheReceiver();
    const ReceiverSlots* const slots = receiver->slots;
    FakeHost host = MakeHost(answer);
    FakeSink sink = MakeSink();
    FakeRecord event = MakeRecord("event", eventValues, std::size(eventValues));
    FakeRecord firstRule = MakeRecord("rule 1", firstRuleValues, std::size(firstRuleValues));
    FakeRecord secondRule = MakeRecord("rule 2", secondRuleValues, std::size(secondRuleValues));
    Record* rules[2] = {&firstRule.record, &secondRule.record};
    bool result = false;
};

TEST_F(AbiSlots, AddRefAlwaysGivesTwoAndReleaseAlwaysOne) {
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(slots->AddRef(receiver), 2);
    }
    for (int i = 0; i < 5000; ++i) {
        ASSERT_EQ(slots->Release(receiver), 1);
    }
}

TEST_F(AbiSlots, TheObjectWorksAfterAnyNumberOfReleases) {
    for (int i = 0; i < 5000; ++i) {
        slots->Release(receiver);
    }
    EXPECT_EQ(TheReceiver(), receiver);
    MakeReady();
    EXPECT_TRUE(slots->SetAllowList(receiver, allowList));
    EXPECT_EQ(Handle(), 2U);
}

TEST_F(AbiSlots, QueryInterfaceKnowsBothIdentifiersAndGivesOnePointer) {
    for (const Guid& id : {receiverId, secondReceiverId}) {
        void* out = nullptr;
        EXPECT_EQ(slots->QueryInterface(receiver, &id, &out), ok);
        EXPECT_EQ(out, receiver);
    }
}

TEST_F(AbiSlots, QueryInterfaceLeavesOutAloneForAnUnknownIdentifier) {
    Guid other = secondReceiverId;
    other.data4[7] ^= 0x80;
    void* out = &other;
    EXPECT_EQ(slots->QueryInterface(receiver, &other, &out), noInterface);
    EXPECT_EQ(out, &other);
}

TEST_F(AbiSlots, InitCallsTheSiblingsAtTheirSlots) {
    EXPECT_TRUE(slots->Init(receiver, &host.host));
    EXPECT_EQ(Journal(), "Ferrocore.CreateZelkObject {427FB576-CFB6-4786-940D-E1D00E5521BA}\n"
                         "ZelkBase.CreateZelkObject {62C4D866-AC50-4A39-B2EC-CA50E5AC94CD}\n"
                         "ZelkBase.CreateZelkObject {DCBDC082-7349-4FB8-8850-3504CB477C72}\n"
                         "ZelkBase.CreateZelkObject {52203844-735C-447B-ACBC-73456337672C}\n"
                         "ZelkBase.CreateZelkObject {FC588690-8589-4EDA-BBB4-2E41964CB580}\n"
                         "IModuleFinder.FindModule module.base\n"
                         "ModuleBase.CreateZelkObject {BE29AE26-D1F3-4E58-843D-5D0A485DFE24}\n"
                         "ILogConfig.GetConfigText 0x200002, 0\n"
                         "ILogConfig.GetConfigText 0x200002, 0\n"
                         "ILogConfig.Release\n"
                         "IModuleFinder.FindModule module.base\n"
                         "ModuleBase.CreateZelkObject {F81DEF0B-B738-4D44-A02E-CC0E7C59D3AA}\n"
                         "IMachineIdService.GetMachineId, 136 of 136 bytes zero\n"
                         "ZelkBase.CreateZelkObject {AA40D0F0-0DF8-4E97-B142-9DEF8DA7EEF6}\n");
    const ConverterUse use = UseOfConverter();
    EXPECT_EQ(use.toNarrow, 1) << "the machine id";
    EXPECT_EQ(use.toWide, 0);
    EXPECT_EQ(use.addRefs, 1);
    EXPECT_EQ(use.releases, 1);
    EXPECT_EQ(use.faults, 0);
}

TEST_F(AbiSlots, InitWithANullHostReturnsFalse) {
    EXPECT_FALSE(slots->Init(receiver, nullptr));
}

TEST_F(AbiSlots, UninitReturnsTrueAndTheNextInitTakesTheNewHost) {
    FakeHost second = MakeHost(nullptr);
    second.queryCode = 5;
    EXPECT_TRUE(slots->Init(receiver, &host.host));
    EXPECT_TRUE(slots->Init(receiver, &second.host));
    EXPECT_EQ(Handle(), 0U);
    EXPECT_NE(Journal().find("host.FreeResult the answer\n"), std::string::npos) << "the first host is still asked";

    EXPECT_TRUE(slots->Uninit(receiver));
    EXPECT_TRUE(slots->Init(receiver, &second.host));
    EXPECT_EQ(Handle(), 0U);
    EXPECT_NE(Journal().find("host.FreeResult null\n"), std::string::npos) << "the second host is asked";
}

TEST_F(AbiSlots, GetPropertyTakesThreeWordsReturnsTrueAndTouchesNothing) {
    uint32_t data = 99;
    EXPECT_TRUE(slots->GetProperty(receiver, 8, static_cast<uint32_t>(reinterpret_cast<uintptr_t>(&data)), 4));
    EXPECT_EQ(data, 99U);
}

TEST_F(AbiSlots, SetPropertyTakesKeyDataAndSize) {
    uint32_t emergency = 5;
    EXPECT_FALSE(slots->SetProperty(receiver, 8, &emergency, 4)) << "there is no host yet";
    ASSERT_TRUE(slots->Init(receiver, &host.host));
    EXPECT_FALSE(slots->SetProperty(receiver, 8, &emergency, 0));
    EXPECT_FALSE(slots->SetProperty(receiver, 8, nullptr, 4));
    EXPECT_FALSE(slots->SetProperty(receiver, 7, &emergency, 4));
    EXPECT_TRUE(slots->SetProperty(receiver, 8, &emergency, 4));
    EXPECT_EQ(Handle(), 2U) << "allowed at once, and raised by the event's flag";
}

TEST_F(AbiSlots, EachPropertyGoesWhereItBelongs) {
    ASSERT_TRUE(slots->Init(receiver, &host.host));
    Journal();
    char mid[] = "MID-OF-HOST";
    char actions[] = R"({"TYPE-1": 1})";
    uint32_t exceptionAllow = 1;
    EXPECT_TRUE(slots->SetProperty(receiver, 6, mid, sizeof mid));
    EXPECT_TRUE(slots->SetProperty(receiver, 20, actions, sizeof actions));
    host.answer = nullptr;
    host.queryCode = 1007;
    EXPECT_EQ(Handle(), 2U) << "blocked, and the action of TYPE-1 turned it into an allow";
    EXPECT_NE(Journal().find(", MID-OF-HOST, null\n"), std::string::npos);

    char noActions[] = R"({"TYPE-1": 0})";
    EXPECT_TRUE(slots->SetProperty(receiver, 20, noActions, sizeof noActions));
    EXPECT_EQ(Handle(), 0U);
    EXPECT_TRUE(slots->SetProperty(receiver, 9, &exceptionAllow, sizeof exceptionAllow));
    EXPECT_EQ(Handle(), 2U);
}

TEST_F(AbiSlots, StartReturnsTrueAndStopFalse) {
    EXPECT_TRUE(slots->Start(receiver));
    EXPECT_TRUE(slots->Start(receiver));
    EXPECT_FALSE(slots->Stop(receiver));
    EXPECT_FALSE(slots->Stop(receiver));
}

TEST_F(AbiSlots, StopClosesTheGateOfTheRules) {
    MakeReady();
    EXPECT_TRUE(slots->SetAllowList(receiver, allowList));
    EXPECT_FALSE(slots->Stop(receiver));
    EXPECT_EQ(Handle(), 0U);
    EXPECT_FALSE(result);
    EXPECT_EQ(Journal().find("host.DeleteDot"), std::string::npos);
    EXPECT_TRUE(slots->Start(receiver));
    EXPECT_EQ(Handle(), 2U);
}

TEST_F(AbiSlots, HandleEventCallsRecordsHostAndSinkAtTheirSlotsWithTheirArguments) {
    MakeReady();
    ASSERT_TRUE(slots->SetAllowList(receiver, allowList));
    EXPECT_EQ(Handle(), 2U);
    EXPECT_TRUE(result);
    EXPECT_EQ(Journal(), "event.GetInt32 flags\n"
                         "rule 1.GetString type, no buffer, size 0\n"
                         "rule 1.GetString type, buffer, size 7\n"
                         "rule 1.GetString guid, no buffer, size 0\n"
                         "rule 1.GetString guid, buffer, size 7\n"
                         "rule 2.GetString guid, no buffer, size 0\n"
                         "rule 2.GetString guid, buffer, size 7\n"
                         "host.QueryDot {\n"
                         "    \"guid\": [\n"
                         "        \"GUID-1\",\n"
                         "        \"GUID-2\"\n"
                         "    ]\n"
                         "}, " +
                             machineId +
                             ", null\n"
                             "host.FreeResult the answer\n"
                             "rule 1.GetString guid, no buffer, size 0\n"
                             "rule 1.GetString guid, buffer, size 7\n"
                             "rule 1.GetString type, no buffer, size 0\n"
                             "rule 1.GetString type, buffer, size 7\n"
                             "rule 2.GetString guid, no buffer, size 0\n"
                             "rule 2.GetString guid, buffer, size 7\n"
                             "rule 2.GetString type, no buffer, size 0\n"
                             "rule 2.GetString type, buffer, size 4\n"
                             "host.DeleteDot GUID-2, " +
                             machineId +
                             ", 2, web\n"
                             "event.GetInt32 flags\n"
                             "event.GetInt32 pid\n"
                             "rule 2.GetString guid, no buffer, size 0\n"
                             "rule 2.GetString guid, buffer, size 7\n"
                             "rule 2.GetString type, no buffer, size 0\n"
                             "rule 2.GetString type, buffer, size 4\n"
                             "event.GetString remote_addr_ip, no buffer, size 0\n"
                             "event.GetString remote_addr_ip, buffer, size 9\n"
                             "event.GetInt32 remote_addr_port\n"
                             "event.GetString local_addr_ip, no buffer, size 0\n"
                             "event.GetString local_addr_ip, buffer, size 9\n"
                             "event.GetInt32 local_addr_port\n"
                             "event.GetInt64 net_drv, preset to 0\n"
                             "sink.Report 1, {\n"
                             "    \"rule_guid\": [\n"
                             "        \"GUID-2\"\n"
                             "    ],\n"
                             "    \"type\": \"web\",\n"
                             "    \"block\": false,\n"
                             "    \"block_modified\": false,\n"
                             "    \"proc_name\": \"System\",\n"
                             "    \"proc_path\": \"System\",\n"
                             "    \"send_ip\": \"10.0.0.2\",\n"
                             "    \"send_port\": \"49152\",\n"
                             "    \"recv_ip\": \"10.0.0.1\",\n"
                             "    \"recv_port\": \"445\",\n"
                             "    \"send_mid\": \"\",\n"
                             "    \"net_drv_version\": \"-4886718345\",\n"
                             "    \"protocol\": \"web\"\n"
                             "}, size that of the text\n");
}

TEST_F(AbiSlots, HandleEventLooksAtNoRuleBehindItsCount) {
    MakeReady();
    ASSERT_TRUE(slots->SetAllowList(receiver, allowList));
    uint32_t reply = 77;
    EXPECT_FALSE(slots->HandleEvent(receiver, &event.record, rules, 1, &reply));
    EXPECT_EQ(reply, 0U);
    EXPECT_EQ(Journal().find("rule 2"), std::string::npos);
    EXPECT_FALSE(slots->HandleEvent(receiver, &event.record, rules, 0, &reply));
    EXPECT_EQ(Journal(), "");
}

TEST_F(AbiSlots, FreeResultTakesNullWhereTheHostDeliveredNothing) {
    MakeReady();
    host.answer = nullptr;
    EXPECT_EQ(Handle(), 0U);
    EXPECT_FALSE(result);
    EXPECT_NE(Journal().find("host.FreeResult null\n"), std::string::npos);
}

TEST_F(AbiSlots, SetAllowListReplacesAndClearAllowListEmpties) {
    MakeReady();
    EXPECT_EQ(Handle(), 0U);
    EXPECT_TRUE(slots->SetAllowList(receiver, allowList));
    EXPECT_EQ(Handle(), 2U);
    EXPECT_FALSE(slots->SetAllowList(receiver, "{}"));
    EXPECT_EQ(Handle(), 2U);
    EXPECT_TRUE(slots->ClearAllowList(receiver));
    EXPECT_EQ(Handle(), 0U);
}

TEST_F(AbiSlots, SetReportSinkTakesTheSinkAndNullEndsTheReports) {
    MakeReady();
    Handle();
    EXPECT_NE(Journal().find("sink.Report"), std::string::npos);
    EXPECT_TRUE(slots->SetReportSink(receiver, nullptr));
    Handle();
    EXPECT_EQ(Journal().find("sink.Report"), std::string::npos);
}

} // namespace
