#include "decide/decisionSession.h"

namespace mordhost {

DecisionSession::DecisionSession(const Policy& policy, DotStore& store, const SessionOptions& options)
    : m_dots(store), m_libraries(options.libraries), m_log(m_libraries.Base(), options.logging),
      m_receiver(m_libraries.Receiver(), policy, m_dots, m_sink),
      m_decider(policy, m_receiver, m_dots, m_sink, m_log, options.dotsDown, options.now) {
    m_log.Take(m_startRecords);
}

} // namespace mordhost
