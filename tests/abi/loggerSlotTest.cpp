// The logger's operations, called at their slots.
#include <string>

#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/fakeHost.h"

namespace {

using namespace edge;

TEST(AbiLoggerSlots, InitStartsTheLoggerAndRecordsReachIt) {
    LoadSiblings(true);
    FakeHost host = MakeHost(nullptr);
    Receiver* const receiver = TheReceiver();
    EXPECT_TRUE(receiver->slots->Init(receiver, &host.host));
    EXPECT_FALSE(receiver->slots->SetProperty(receiver, 8, nullptr, 0));
    EXPECT_EQ(Journal(), "Ferrocore.CreateZelkObject {427FB576-CFB6-4786-940D-E1D00E5521BA}\n"
                         "ZelkBase.CreateZelkObject {62C4D866-AC50-4A39-B2EC-CA50E5AC94CD}\n"
                         "ZelkBase.CreateZelkObject {DCBDC082-7349-4FB8-8850-3504CB477C72}\n"
                         "ZelkBase.CreateZelkObject {52203844-735C-447B-ACBC-73456337672C}\n"
                         "ZelkBase.CreateZelkObject {FC588690-8589-4EDA-BBB4-2E41964CB580}\n"
                         "IModuleFinder.FindModule module.base\n"
                         "ModuleBase.CreateZelkObject {BE29AE26-D1F3-4E58-843D-5D0A485DFE24}\n"
                         "ILogConfig.GetConfigText 0x200002, 0\n"
                         "ILogConfig.GetConfigText 0x200002, 0\n"
                         "ModuleBase.CreateZelkObject {68F7E655-0361-40B6-8846-F140043AA417}\n"
                         "ILogWriter.SetLevel 30\n"
                         "ILogWriter.Start MORD_Recv, 0\n"
                         "ILogConfig.Release\n"
                         "ZelkBase.CreateZelkObject {AA40D0F0-0DF8-4E97-B142-9DEF8DA7EEF6}\n"
                         "ILogWriter.WriteRecord TIME [TRACE][mordRev.cpp LINE][CMordRecv::InitLogMoudle] [THREAD] "
                         "logger is ready\\r\\n, 30\n"
                         "IModuleFinder.FindModule module.base\n"
                         "ModuleBase.CreateZelkObject {F81DEF0B-B738-4D44-A02E-CC0E7C59D3AA}\n"
                         "IMachineIdService.GetMachineId, 136 of 136 bytes zero\n"
                         "ILogWriter.WriteRecord TIME [TRACE][localMid.cpp LINE][CMordRecv::GetLocalMid] [THREAD] "
                         "GetLocalMid()-Get local mid is:MID-??\\r\\n, 30\n"
                         "ILogWriter.WriteRecord TIME [TRACE][mordRev.cpp LINE][CMordRecv::Init] [THREAD] "
                         "init get mid=MID-??\\r\\n, 30\n"
                         "ILogWriter.WriteRecord TIME [ERROR][mordRev.cpp LINE][CMordRecv::SetProperty] [THREAD] "
                         "param error, set property fail\\r\\n, 35\n");
    const ConverterUse use = UseOfConverter();
    EXPECT_EQ(use.toNarrow, 1) << "the machine id";
    EXPECT_GE(use.toWide, 4) << "at least the file names of four records";
    EXPECT_EQ(use.addRefs, use.toNarrow + use.toWide);
    EXPECT_EQ(use.releases, use.addRefs);
    EXPECT_EQ(use.faults, 0);
}

} // namespace
