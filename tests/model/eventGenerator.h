// Random events with their rules and the host's answers.
#pragma once

#include "model/testCase.h"
#include "model/vocabulary.h"

namespace model {

// With `depth` 0 the host occasionally uses the receiver during a call; events that it passes in then have depth 1 and
// make no such calls.
EventScript RandomEvent(Vocabulary& words, int depth);

// Operations that a host may run at any time, also during an event.
Operation RandomOperationAtAnyTime(Vocabulary& words);

} // namespace model
