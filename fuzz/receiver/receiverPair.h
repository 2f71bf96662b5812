// The receiver and the model of it, side by side: what one input does to both must be the same.
#pragma once

#include <map>
#include <string>

#include "fuzz/input.h"
#include "fuzz/receiver/hostSide.h"
#include "kit/host/receiverFields.h"
#include "model/receiverModel.h"
#include "model/siblingState.h"
#include "model/trace.h"

// The share of the inputs that are run with records, which take most of the time: see IsOneIn.
inline constexpr uint32_t recordsOneIn = 32;

// Made once in a process and used for every input; each begins with the same state.
class ReceiverPair {
public:
    static ReceiverPair& Instance();

    // Brings both to the state in which each input meets them: initialised and started, in the default modes, with the
    // tables of the known documents (vocabulary.h). With `logs` the records of
    // both are compared too.
    void Begin(bool logs);

    // Requires that both hold the same tables, made the same calls and records, and that the receiver's lock is free.
    void RequireTheSame();

    // Requires that the receiver, as it is now, matches machine ids as the model does: under keys of the list as it
    // stands, and under one that is known.
    void RequireKnownMatches();

    // Lets both decide an event that is known.
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
