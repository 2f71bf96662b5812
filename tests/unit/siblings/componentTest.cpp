// Init of the component with the built siblings.
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "kit/host/countingHost.h"
#include "kit/text/utf.h"
#include "unit/siblings/logRecords.h"

namespace siblingTest {

namespace {

// The level and the message of each record, such as "[TRACE] message".
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
            throw std::runtime_error("the component rejects its interface id");
        }
        return *static_cast<IMordRev*>(object);
    }

    const LogFolder folder;
    const SiblingLibrary zelkBase{std::string("ZelkBase")};
    const SiblingLibrary ferrocore{std::string("Ferrocore")};
    const SiblingLibrary component{std::string("mordRev")};
    kit::CountingHost host; // never called
};

TEST_F(ComponentTest, initLogsTheMachineIdAtLevelTrace) {
    folder.Write("Zelklog.ini", "[OUTLOG]\r\nWriteLog=1\r\nLogLevel=30\r\n");
    ASSERT_TRUE(Component().Init(&host));
    const std::string id = kit::ToNarrow(MachineIdOfSystem());
    EXPECT_EQ(LevelsAndMessages(folder.Log("MORD_Recv")), "[TRACE] logger is ready\r\n"
                                                          "[TRACE] GetLocalMid()-Get local mid is:" +
                                                              id + "\r\n[TRACE] init get mid=" + id + "\r\n");
}

TEST_F(ComponentTest, levelErrorDropsTraceRecords) {
    folder.Write("Zelklog.ini", "[OUTLOG]\r\nWriteLog=1\r\nLogLevel=35\r\n");
    ASSERT_TRUE(Component().Init(&host));
    EXPECT_EQ(folder.Log("MORD_Recv"), "");
    uint32_t reply = 7;
    EXPECT_FALSE(Component().HandleEvent(nullptr, nullptr, 0, &reply));
    const std::string log = LevelsAndMessages(folder.Log("MORD_Recv"));
    EXPECT_TRUE(log.starts_with("[ERROR] ")) << log;
    EXPECT_EQ(log.find("[TRACE]"), std::string::npos) << log;
}

TEST_F(ComponentTest, initWithoutAnIniFileWritesNothing) {
    ASSERT_TRUE(Component().Init(&host));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

} // namespace

} // namespace siblingTest
