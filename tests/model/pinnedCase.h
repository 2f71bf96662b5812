// Cases made by hand, with what must come of them. They hold the model to what hosts are promised, and the library with
// it: each is run on both.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/caseRun.h"
#include "model/operations.h"

namespace model {

using Lines = std::vector<std::string>;

class PinnedCase : public testing::Test {
protected:
    static void SetUpTestSuite() { PrepareLibrary(true); }

    // Adds a step.
    void Do(Operation operation) { m_case.operations.push_back(std::move(operation)); }

    // A receiver that is initialised, reports and is started.
    void MakeRunning() {
        Do(InitOf(0));
        Do(SinkOf(0));
        Do(StartOf());
    }

    // Runs all steps from the beginning and gives what was seen during the last `count` of them: the lines behind each
    // one's title. Reads of records are left out.
    Lines Seen(size_t count = 1) {
        Lines last;
        for (const std::string& line : SeenWithReads(count)) {
            if (line.find(".Get") == std::string::npos || line.starts_with("log ")) {
                last.push_back(line);
            }
        }
        return last;
    }

    Lines SeenWithReads(size_t count = 1) {
        const Trace model = RunOnModel(m_case, branches);
        EXPECT_EQ(Difference(model, RunOnLibrary(m_case)), "");
        TestCase before = m_case;
        before.operations.resize(before.operations.size() - count);
        const size_t skipped = RunOnModel(before, branches).Lines().size();
        Lines seen = model.Lines();
        seen.erase(seen.begin(), seen.begin() + static_cast<std::ptrdiff_t>(skipped));
        std::erase_if(seen, [](const std::string& line) { return line.starts_with("> "); });
        return seen;
    }

    // The same, only the records, or only the host's calls and the result.
    Lines Records(size_t count = 1) {
        Lines seen = Seen(count);
        std::erase_if(seen, [](const std::string& line) { return !line.starts_with("log "); });
        return seen;
    }
    Lines Outcome(size_t count = 1) {
        Lines seen = Seen(count);
        std::erase_if(seen, [](const std::string& line) { return line.starts_with("log "); });
        return seen;
    }

    TestCase m_case;
    BranchCounts branches;
};

// A record of `function`, without its class.
inline std::string TraceOf(const std::string& function, const std::string& message) {
    return "log 30 CMordRecv::" + function + ": " + message;
}
inline std::string ErrorOf(const std::string& function, const std::string& message) {
    return "log 35 CMordRecv::" + function + ": " + message;
}

} // namespace model
