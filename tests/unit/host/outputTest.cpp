#include <sstream>

#include <gtest/gtest.h>

#include "output/heldOutput.h"
#include "output/outputFile.h"
#include "output/progressBar.h"
#include "system/fileError.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;
using std::chrono::milliseconds;

namespace {

const ProgressBar::Clock::time_point start{};

std::string HalfBar(const std::string& behind) {
    return "\r[" + std::string(20, '#') + std::string(20, '.') + "] " + behind;
}

} // namespace

TEST(ProgressBar, AShortRunShowsNone) {
    std::ostringstream out;
    ProgressBar bar(out, true, 1000, start);
    bar.Advance(500, 5, start + milliseconds(499));
    bar.Clear();
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, ALongRunShowsItsProgress) {
    std::ostringstream out;
    ProgressBar bar(out, true, 1000, start);
    bar.Advance(500, 5, start + milliseconds(500));
    EXPECT_EQ(out.str(), HalfBar("50%  5 events"));
}

TEST(ProgressBar, IsNotDrawnMoreThanTenTimesASecond) {
    std::ostringstream out;
    ProgressBar bar(out, true, 1000, start);
    bar.Advance(500, 5, start + milliseconds(500));
    bar.Advance(600, 6, start + milliseconds(599));
    EXPECT_EQ(out.str(), HalfBar("50%  5 events"));
    bar.Advance(1000, 10, start + milliseconds(600));
    EXPECT_EQ(out.str(), HalfBar("50%  5 events") + "\r[" + std::string(40, '#') + "] 100%  10 events");
}

TEST(ProgressBar, IsRemovedFromItsLine) {
    std::ostringstream out;
    ProgressBar bar(out, true, 1000, start);
    bar.Advance(500, 5, start + milliseconds(500));
    out.str("");
    bar.Clear();
    bar.Clear();
    EXPECT_EQ(out.str(), "\r\x1b[K");
}

TEST(ProgressBar, IsNotDrawnWithoutATerminal) {
    std::ostringstream out;
    ProgressBar bar(out, false, 1000, start);
    bar.Advance(500, 5, start + milliseconds(5000));
    bar.Clear();
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, CanBeDrawnAgainUntilItsEnd) {
    std::ostringstream out;
    ProgressBar bar(out, true, 1000, start);
    bar.Redraw();
    EXPECT_EQ(out.str(), "") << "it was not drawn yet";
    bar.Advance(500, 5, start + milliseconds(500));
    bar.Clear();
    out.str("");
    bar.Redraw();
    EXPECT_EQ(out.str(), HalfBar("50%  5 events"));
    out.str("");
    bar.Finish();
    bar.Redraw();
    bar.Advance(600, 6, start + milliseconds(5000));
    EXPECT_EQ(out.str(), "\r\x1b[K");
}

TEST(HeldOutput, WritesRowsAboveTheBar) {
    std::ostringstream terminal;
    ProgressBar bar(terminal, true, 1000, start);
    HeldOutput output(terminal, &bar);
    output.Stream() << "row 1\n";
    EXPECT_EQ(terminal.str(), "");
    output.Flush();
    bar.Advance(500, 5, start + milliseconds(500));
    output.Stream() << "row 2\n";
    output.Flush();
    output.Flush();
    const std::string drawn = HalfBar("50%  5 events");
    EXPECT_EQ(terminal.str(), "row 1\n" + drawn + "\r\x1b[Krow 2\n" + drawn);
}

TEST(HeldOutput, IsTheStreamItselfWithoutABar) {
    std::ostringstream terminal;
    HeldOutput output(terminal, nullptr);
    output.Stream() << "row";
    EXPECT_EQ(terminal.str(), "row");
}

TEST(OutputFile, HoldsTheWrittenBytes) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("out", "what stood there before");
    OutputFile file(name);
    file.Write("a\nb\r\n");
    file.Write(std::string("\0\x1A", 2));
    file.Flush();
    EXPECT_EQ(directory.Read("out"), std::string("a\nb\r\n\0\x1A", 7));
}

TEST(OutputFile, FailsIfItCannotBeOpened) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("no/such/directory/out");
    try {
        OutputFile file(name);
        FAIL() << "it was opened";
    } catch (const FileError& error) {
        EXPECT_EQ(std::string(error.what()), "cannot write " + name + ": No such file or directory");
    }
}
