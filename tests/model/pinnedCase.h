// Cases written by hand, with their required outcome. Each runs on the model and on the shipped library.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/operations.h"
#include "model/session.h"

namespace model {

using Lines = std::vector<std::string>;

class PinnedCase : public testing::Test {
protected:
    // Adds a step.
    void Do(Operation operation) { m_case.operations.push_back(std::move(operation)); }

    // Initialises and starts a receiver that reports.
    void MakeRunning() {
        Do(InitOf(0));
        Do(SinkOf(0));
        Do(StartOf());
    }

    // Runs all steps and returns the lines of the last `count` steps, without titles, reads of records and calls of
    // siblings.
    Lines Seen(size_t count = 1) {
        Lines last;
        for (const std::string& line : SeenWithReads(count)) {
            const bool isRead = line.find(".Get") != std::string::npos && !line.starts_with("log ");
            if (!isRead && !line.starts_with("siblings: ")) {
                last.push_back(line);
            }
        }
        return last;
    }

    Lines SeenWithReads(size_t count = 1) {
        Session session(branches);
        TestCase last = m_case;
        TestCase before = m_case;
        before.operations.resize(before.operations.size() - count);
        last.operations.erase(last.operations.begin(), last.operations.end() - static_cast<std::ptrdiff_t>(count));
        for (const Operation& operation : before.operations) { // the state of the siblings before the last steps
            last.siblings = operation.kind == OperationKind::ChangeSiblings ? operation.siblings : last.siblings;
        }
        EXPECT_EQ(session.Run(before), "");
        EXPECT_EQ(session.Run(last), "");
        Lines seen = session.Seen().Lines();
        std::erase_if(seen, [](const std::string& line) { return line.starts_with("> "); });
        return seen;
    }

    // Only the records; only the calls to the host and the result.
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
