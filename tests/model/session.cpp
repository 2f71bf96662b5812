#include "model/session.h"

#include "model/siblings.h"

namespace model {
Session::Session(BranchCounts& branches)
    : m_model(m_modelTrace, m_modelSiblings, branches), m_product(m_librarySiblings, m_libraryTrace),
      m_modelWorld(m_model, m_modelSiblings, m_modelTrace),
      m_libraryWorld(m_product.Receiver(), m_librarySiblings, m_libraryTrace) {
    branches.AddReceiver();
}

std::string Session::Run(const TestCase& testCase) {
    m_modelTrace.Clear();
    m_libraryTrace.Clear();
    m_modelSiblings = testCase.siblings;
    m_librarySiblings = testCase.siblings;
    m_modelWorld.Run(testCase.operations);
    m_libraryWorld.Run(testCase.operations);
    return Difference(m_modelTrace, m_libraryTrace);
}

void Session::SetVerbose() {
    m_modelWorld.SetVerbose(true);
    m_libraryWorld.SetVerbose(true);
}

} // namespace model
