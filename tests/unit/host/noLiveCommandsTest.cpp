// The commands that watch the machine exist only on Linux.
#include "unit/host/mordhostFixture.h"

using mordhostTest::MordhostTest;

namespace {

class LiveCommands : public MordhostTest {};

} // namespace

TEST_F(LiveCommands, AreUnknownHere) {
    EXPECT_EQ(Mordhost({"record"}).code, 2);
    EXPECT_EQ(Mordhost({"watch", directory.Write("p.json", R"({"rules": []})")}).code, 2);
    const std::string help = Mordhost({"--help"}).output;
    EXPECT_EQ(help.find("record "), std::string::npos) << help;
    EXPECT_EQ(help.find("watch "), std::string::npos) << help;
}
