// The process of a connection in the reports of the shipped library, on Linux.
#include <unistd.h>

#include "product/productDecision.h"

using namespace kit;

namespace {

using ProductPath = ProductDecision;

TEST_F(ProductPath, OfALivingProcessIsReportedInLowerCase) {
    event.Int32("pid", getpid());
    host.queryCode = 1;
    Decide();
    std::string path = std::filesystem::read_symlink("/proc/self/exe");
    for (char& c : path) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    ExpectedReport expected = Report(true);
    expected.procPath = path;
    expected.procName = path.substr(path.rfind('/') + 1);
    EXPECT_EQ(sink.Reports(), Lines{expected.Text()});
}

TEST_F(ProductPath, OfNoProcessIsEmpty) {
    event.Int32("pid", 0);
    host.queryCode = 1;
    Decide();
    ExpectedReport expected = Report(true);
    expected.procPath = expected.procName = "";
    EXPECT_EQ(sink.Reports(), Lines{expected.Text()});
    EXPECT_EQ(TakeRecords().at(4),
              Error("procPathLinux.cpp CMordRecv::GetProcPathByPid", "Open process failed! pid=0 ,lasterror=3"));
}

} // namespace
