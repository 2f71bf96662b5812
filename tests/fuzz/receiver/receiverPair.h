// The receiver and the model of it, side by side: one input must have the same effect on both.
#pragma once

#include <map>
#include <string>

#include "fuzz/input.h"
#include "fuzz/receiver/hostSide.h"
#include "kit/host/receiverFields.h"
#include "model/receiverModel.h"
#include "model/siblingState.h"
#include "model/trace.h"

// The share of the inputs that run with log records, which take most of the time: see IsOneIn.
inline constexpr uint32_t recordsOneIn = 32;

// Made once in a process and used for every input; each begins with the same state.
class ReceiverPair {
public:
    static ReceiverPair& Instance();

    // Brings both to the state in which each input begins: initialised and started, in the default modes, with the
    // tables of the known documents (vocabulary.h). With `logs`, the log records of both are compared too.
    void Begin(bool logs);

    // Requires that both hold the same tables and made the same calls and log records, and that the receiver's lock is
    // free.
    void RequireTheSame();

    // Requires that both match machine ids in the same way: ids of the current allow list, single and many at once, and
    // ids that are not in it.
    void RequireKnownMatches();

    // Requires that both decide a known event in the same way.
    void RequireKnownDecision();

    CMordRecv library;
    HostSide librarySide{library, false};
    model::ReceiverModel modelReceiver;
    HostSide modelSide{modelReceiver, true};

private:
    ReceiverPair();

    void ResetTables();

    model::Trace m_trace;
    model::SiblingState m_siblings;
    model::BranchCounts m_branches;
    std::map<std::string, model::TextSet, model::TextOrder> m_knownList;
    std::map<std::string, bool, model::TextOrder> m_knownActions;
    bool m_logs = false;
};
