// The process of a connection in the reports of the shipped library, on Windows.
#include "product/productDecision.h"
#include "unit/native/real/childProcess.h"
#include "unit/native/real/systemTellsPeb.h"

#include <windows.h>

using namespace kit;

namespace {

constexpr int ownBits = sizeof(void*) * 8;
constexpr int otherBits = 96 - ownBits;

class ProductPath : public ProductDecision {
protected:
    // Has an event of the process decided.
    void DecideFor(uint32_t pid) {
        event.Int32("pid", static_cast<int32_t>(pid));
        host.queryCode = 1;
        Decide();
    }

    // The report's text for a process with that image, whose path the report has in lower case.
    static std::string ReportOf(const std::string& image) {
        const std::string path = LowerCase(image);
        ExpectedReport expected = Report(true);
        expected.procName = path.substr(path.rfind('\\') + 1);
        expected.procPath.clear();
        for (const char c : path) {
            expected.procPath += c == '\\' ? "\\\\" : std::string(1, c); // as JSON has it
        }
        return expected.Text();
    }
    static std::string ReportWithoutPath() {
        ExpectedReport expected = Report(true);
        expected.procPath = expected.procName = "";
        return expected.Text();
    }

    static std::string LookUpError(const std::string& message) {
        return Error("procPathWin32.cpp CMordRecv::GetProcPathByPid", message);
    }
};

TEST_F(ProductPath, OfALivingProcessIsItsImageInLowerCase) {
    DecideFor(::GetCurrentProcessId());
    const std::string image = ProgramOf(::GetCurrentProcess());
    EXPECT_EQ(sink.Reports(), Lines{ReportOf(image)});
    EXPECT_NE(image, LowerCase(image)); // the test program's name has capitals
}

TEST_F(ProductPath, OfAChildOfTheLibrarysWidthIsItsImageInLowerCase) {
    const ChildProcess child(ownBits);
    ASSERT_TRUE(ProgramOf(child.Handle()).ends_with("\\nativeChild.exe"));
    DecideFor(child.Id());
    EXPECT_EQ(sink.Reports(), Lines{ReportOf(ProgramOf(child.Handle()))});
}

TEST_F(ProductPath, OfAChildIsWhatItsOwnParametersSay) {
    ChildProcess child(ownBits);
    child.Tell("setPath Q:\\\xC3\x84rger\\File.EXE");
    DecideFor(child.Id());
    EXPECT_EQ(sink.Reports(), Lines{ReportOf("Q:\\\xC3\x84rger\\File.EXE")});
}

TEST_F(ProductPath, OfAChildOfTheOtherWidthIsItsImageWhereTheSystemTellsItsPebAndEmptyWhereNot) {
    const ChildProcess child(otherBits);
    DecideFor(child.Id());
    const auto records = TakeRecords();
    const std::string error = LookUpError("get process path fail, pid=" + std::to_string(child.Id()));
    if (SystemTellsPeb(child.Handle())) {
        EXPECT_EQ(sink.Reports(), Lines{ReportOf(ProgramOf(child.Handle()))});
        EXPECT_EQ(std::count(records.begin(), records.end(), error), 0);
    } else {
        EXPECT_EQ(sink.Reports(), Lines{ReportWithoutPath()});
        EXPECT_EQ(records.at(4), error);
    }
}

TEST_F(ProductPath, OfAProcessThatHasEndedIsEmpty) {
    ChildProcess child(ownBits);
    child.End();
    DecideFor(child.Id());
    EXPECT_EQ(sink.Reports(), Lines{ReportWithoutPath()});
    EXPECT_EQ(TakeRecords().at(4), LookUpError("get process path fail, pid=" + std::to_string(child.Id())));
}

TEST_F(ProductPath, OfNoProcessIsEmpty) {
    DecideFor(0);
    EXPECT_EQ(sink.Reports(), Lines{ReportWithoutPath()});
    EXPECT_EQ(TakeRecords().at(4), LookUpError("Open process failed! pid=0 ,lasterror=87"));
}

} // namespace
