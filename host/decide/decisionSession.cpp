#include "decide/decisionSession.h"

namespace mordhost {

DecisionSession::DecisionSession(const Policy& policy, DotStore& store, const std::filesystem::path& libraries,
                                 bool logging)
    : m_dots(store), m_libraries(libraries), m_log(m_libraries.Base(), logging),
      m_receiver(m_libraries.Receiver(), policy, m_dots, m_sink), m_decider(policy, m_receiver, m_dots, m_sink, m_log) {
    m_log.Take(m_startRecords);
}

} // namespace mordhost
