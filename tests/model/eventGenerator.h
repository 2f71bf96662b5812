// Random events with their rules and the host's answers.
#pragma once

#include "model/testCase.h"
#include "model/vocabulary.h"

namespace model {

// With `depth` 0 the host may, now and then, use the receiver from within a call; an event that it hands in then has
// depth 1 and is plain.
EventScript RandomEvent(Vocabulary& words, int depth);

// What a host may do at any time, also while an event is being handled.
Operation RandomOperationAtAnyTime(Vocabulary& words);

} // namespace model
