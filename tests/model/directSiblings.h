// Sibling libraries for tests that run very many cases, or several threads: nothing in them takes a lock, counts with
// an atomic or keeps what it was given, so that they neither slow a case down nor put threads into an order.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/siblingState.h"
#include "platform/wideChar.h"

namespace model {

// Takes the records of the thread that it is set on, with their level and as wide as they came.
class RecordTaker {
public:
    virtual ~RecordTaker() = default;
    virtual void Take(int32_t level, std::basic_string_view<WideChar> record) = 0;
};

// Loads the libraries that stand in the place of ZelkBase and Ferrocore, and lets them hand out the services below. To
// be called before the receiver is used. With `logs` the receiver's next start turns its log file on, else it leaves it
// as it is. A second call changes only that.
//
// The converter makes one unit of each byte and the other way round, whatever the bytes are: a record shows which bytes
// went in. The logger hands each record to the RecordTaker of the calling thread, if it has one.
void UseDirectSiblings(bool logs);

// What the services answer by; a default SiblingState until it is set. Not to be changed while the receiver starts.
void AnswerBy(const SiblingState* state);

// Sets the calling thread's taker; null for none.
void TakeRecords(RecordTaker* taker);

} // namespace model
