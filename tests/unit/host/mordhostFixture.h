// Runs the built program on documents of a test.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/system/process.h"
#include "unit/host/environment.h"
#include "unit/host/temporaryDirectory.h"

namespace mordhostTest {

class MordhostTest : public testing::Test {
protected:
    // Runs mordhost with these arguments.
    static kit::ProcessResult Mordhost(const std::vector<std::string>& arguments, const std::string& input = "") {
        return kit::RunProcess({MORDHOST_PROGRAM, arguments, input, ""});
    }

    // Writes the documents and replays them.
    kit::ProcessResult Replay(const std::string& policy, const std::string& events,
                              const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"replay", directory.Write("p.json", policy),
                                              directory.Write("e.jsonl", events)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return Mordhost(arguments);
    }

    // Removes the name of the directory of the test from the text.
    std::string Plain(std::string text) const {
        const std::string name = directory.Name("");
        for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, at)) {
            text.erase(at, name.size());
        }
        return text;
    }

    kit::TemporaryDirectory directory;
};

// Also makes the directory of the test the one for temporary files.
class TidyMordhostTest : public MordhostTest {
protected:
    // Expects that the directory of the test contains no directory.
    void ExpectNothingIsLeft() const {
        for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
            EXPECT_FALSE(entry.is_directory()) << entry.path();
        }
    }

private:
    const std::string m_place = mordhost::Utf8Of(directory.Path());
    const ScopedVariable m_posix{"TMPDIR", m_place};
    const ScopedVariable m_windows{"TMP", m_place};
};

} // namespace mordhostTest
