// Finds the allow-list entries that a recording lacks.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "usage/recording.h"
#include "usage/suggestion.h"
#include "usage/trialSession.h"
#include "usage/verdictFile.h"

namespace mordhost {

// Decides the recording under the policy. For each blocked event whose dot names machines of which none is allowed, it
// proposes an entry: the least machine id of the dot of the first such rule, under the key of the rule. Then it decides
// the recording again with the entries, until no event proposes another one, and removes the entries through which no
// event becomes allowed. The result is that of the last decision.
//
// Two readings of the recording are enough, unless an entry changes which dots are left for later events. The memory
// depends on the number of entries and not on the number of events.
class Suggester {
public:
    // `most` is the number of events that each sample keeps. The arguments must outlive this. Throws what the functions
    // of TrialSession throw.
    Suggester(const Policy& policy, TrialSession& session, Recording& recording, size_t most)
        : m_policy(policy), m_session(session), m_recording(recording), m_most(most) {}

    // Call it once. Throws RunError if the recording changes, and what the recording and the session throw.
    Suggestions Run();

private:
    using Indexes = std::unordered_map<std::string, size_t>;

    void DecideAsIs();
    void DecideWithEntries();
    void Compare(const Decision& decision, bool before);
    void Propose(const Decision& decision);
    bool RemoveUseless();
    void Index();

    const Policy& m_policy;
    TrialSession& m_session;
    Recording& m_recording;
    const size_t m_most;
    VerdictFile m_verdicts; // without entries
    Suggestions m_result;
    Indexes m_indexes;        // of the entries, by key, NUL and machine
    std::vector<bool> m_used; // whether an entry allowed an event in the last pass
    bool m_isGrowing = true;  // whether events may propose entries
};

} // namespace mordhost
