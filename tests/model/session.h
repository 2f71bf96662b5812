// The model and the shipped library side by side, from the first call to a receiver to its end.
#pragma once

#include <string>

#include "model/branches.h"
#include "model/product.h"
#include "model/receiverModel.h"
#include "model/scriptedWorld.h"
#include "model/testCase.h"
#include "model/trace.h"

namespace model {

// One at a time. Both receivers keep their state from one case to the next.
class Session {
public:
    // Adds the branches that the model takes to `branches`.
    explicit Session(BranchCounts& branches);

    // Runs the case on both. Returns the difference between the two traces, or an empty text.
    std::string Run(const TestCase& testCase);

    // Makes further differences show the inputs too.
    void SetVerbose();

    // What the model did in the last case.
    const Trace& Seen() const { return m_modelTrace; }

    // QueryDot calls of the library since the beginning.
    uint64_t Queries() const { return m_libraryWorld.Queries(); }

private:
    Trace m_modelTrace;
    Trace m_libraryTrace;
    SiblingState m_modelSiblings;
    SiblingState m_librarySiblings;
    ReceiverModel m_model;
    Product m_product;
    ScriptedWorld m_modelWorld;
    ScriptedWorld m_libraryWorld;
};

} // namespace model
