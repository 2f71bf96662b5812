// The component beside its siblings: what Init asks of them, they give.
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "kit/host/countingHost.h"
#include "unit/siblings/logRecords.h"

namespace siblingTest {

namespace {

// The records of a log, each with the level and what stands behind the site: "[TRACE] message".
std::string LevelsAndMessages(const std::string& log) {
    std::istringstream lines(log);
    std::string shortened;
    for (std::string line; std::getline(lines, line);) {
        const size_t level = line.find('[');
        const size_t thread = line.find("] [") + 3;
        shortened += line.substr(level, line.find(']') + 1 - level) + line.substr(line.find(']', thread) + 1) + '\n';
    }
    return shortened;
}

class ComponentTest : public testing::Test {
protected:
    IMordRev& Component() {
        void* object = nullptr;
        if (component.Factory()(&IID_IMordRev, &object) != 0) {
            throw std::runtime_error("the component refuses its interface");
        }
        return *static_cast<IMordRev*>(object);
    }

    static std::string NarrowMachineId() {
        const WideString id = MachineIdOfSystem();
        std::string narrow;
        for (const WideChar unit : id) {
            narrow.push_back(static_cast<char>(unit)); // digits and dashes
        }
        return narrow;
    }

    const LogFolder folder;
    const SiblingLibrary zelkBase{std::string("ZelkBase")};
    const SiblingLibrary ferrocore{std::string("Ferrocore")};
    const SiblingLibrary component{std::string("mordRev")};
    kit::CountingHost host; // never called
};

TEST_F(ComponentTest, startsAndLogsTheMachineIdByTheIniFileOfTheLogDirectory) {
    WriteFile(folder.Path() / "Zelklog.ini", "[OUTLOG]\r\nWriteLog=1\r\nLogLevel=30\r\n");
    ASSERT_TRUE(Component().Init(&host));
    const std::string id = NarrowMachineId();
    EXPECT_EQ(LevelsAndMessages(folder.Log("MORD_Recv")), "[TRACE] logger is ready\r\n"
                                                          "[TRACE] GetLocalMid()-Get local mid is:" +
                                                              id + "\r\n[TRACE] init get mid=" + id + "\r\n");
}

TEST_F(ComponentTest, keepsTraceRecordsOutOfALogOfErrors) {
    WriteFile(folder.Path() / "Zelklog.ini", "[OUTLOG]\r\nWriteLog=1\r\nLogLevel=35\r\n");
    ASSERT_TRUE(Component().Init(&host));
    EXPECT_EQ(folder.Log("MORD_Recv"), "");
    uint32_t reply = 7;
    EXPECT_FALSE(Component().HandleEvent(nullptr, nullptr, 0, &reply));
    const std::string log = LevelsAndMessages(folder.Log("MORD_Recv"));
    EXPECT_TRUE(log.starts_with("[ERROR] ")) << log;
    EXPECT_EQ(log.find("[TRACE]"), std::string::npos) << log;
}

TEST_F(ComponentTest, startsWithoutAnIniFileAndWritesNothing) {
    ASSERT_TRUE(Component().Init(&host));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

} // namespace

} // namespace siblingTest
