// Siblings that take no lock, count no references and keep nothing: the only order among the threads of a race test is
// the receiver's own.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/wideChar.h"

namespace race {

// Receives the records of the thread that set it.
class RecordTaker {
public:
    virtual ~RecordTaker() = default;
    virtual void Take(int32_t level, std::basic_string_view<WideChar> record) = 0;
};

// Loads relays in the place of ZelkBase and Ferrocore and provides the services below. Call it before the receiver is
// used. With `logs` the next start of the receiver turns its log file on; otherwise it leaves the log as it is. A
// second call changes only that.
//
// The converter turns each byte into one unit and back. The logger passes each record to the RecordTaker of the calling
// thread, if there is one.
void UseDirectSiblings(bool logs);

// Loads the siblings and turns the log of the library on or off.
void PrepareLibrary(bool logs);

// Sets the taker of the calling thread; null for none.
void TakeRecords(RecordTaker* taker);

} // namespace race
