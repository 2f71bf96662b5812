// The process of a connection in the reports of the shipped library, on Windows: its path is empty.
#include "product/productDecision.h"

#include <windows.h>

using namespace hostKit;

namespace {

class ProductPath : public ProductDecision {
protected:
    // The record that the look-up for `pid` leaves, under a report with an empty path.
    std::string RecordFor(uint32_t pid) {
        event.Int32("pid", static_cast<int32_t>(pid));
        host.queryCode = 1;
        Decide();
        ExpectedReport expected = Report(true);
        expected.procPath = expected.procName = "";
        EXPECT_EQ(sink.Reports(), Lines{expected.Text()});
        return TakeRecords().at(4);
    }

    static std::string LookUpError(const std::string& message) {
        return Error("procPathWin32.cpp CMordRecv::GetProcPathByPid", message);
    }
};

TEST_F(ProductPath, OfALivingProcessIsEmpty) {
    const uint32_t pid = ::GetCurrentProcessId();
    EXPECT_EQ(RecordFor(pid), LookUpError("get process path fail, pid=" + std::to_string(pid)));
}

TEST_F(ProductPath, OfNoProcessIsEmpty) {
    EXPECT_EQ(RecordFor(0), LookUpError("Open process failed! pid=0 ,lasterror=87"));
}

} // namespace
