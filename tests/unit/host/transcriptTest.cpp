// The commands of examples/commands print what the files there say, on every platform.
#include <sstream>

#include <gtest/gtest.h>

#include "kit/system/process.h"
#include "system/filePath.h"
#include "system/inputStream.h"

using kit::ProcessResult;
using kit::RunProcess;

namespace {

namespace fs = std::filesystem;

// "$ mordhost COMMAND ARGUMENT ...", the output, and "exit code N".
struct Transcript {
    std::vector<std::string> arguments;
    std::string output;
    int code = -1;
};

Transcript ReadTranscript(const fs::path& file) {
    std::istringstream lines(mordhost::InputStream(mordhost::Utf8Of(file)).ReadAll());
    Transcript transcript;
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line.rfind("$ mordhost ", 0), 0U) << line;
    std::istringstream words(line.substr(11));
    for (std::string word; words >> word;) {
        transcript.arguments.push_back(word);
    }
    std::string last;
    while (std::getline(lines, line)) {
        transcript.output += last;
        last = line + '\n';
    }
    EXPECT_EQ(last.rfind("exit code ", 0), 0U) << last;
    transcript.code = std::stoi(last.substr(10));
    return transcript;
}

} // namespace

TEST(Transcripts, AreWhatTheCommandsPrint) {
    size_t count = 0;
    for (const auto& file : fs::directory_iterator(mordhost::PathOf(MORDHOST_SOURCE_DIRECTORY) / "examples/commands")) {
        SCOPED_TRACE(file.path().filename().string());
        const Transcript expected = ReadTranscript(file.path());
        const ProcessResult result = RunProcess({MORDHOST_PROGRAM, expected.arguments, "", MORDHOST_SOURCE_DIRECTORY});
        EXPECT_EQ(result.output, expected.output) << result.error;
        EXPECT_EQ(result.code, expected.code) << result.error;
        ++count;
    }
    EXPECT_GE(count, 3U);
}
