// One case: the operations on a receiver, and the answers of the host. Plain data: the same case runs on the
// model and on the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/namedValues.h"
#include "model/siblingState.h"

namespace model {

// How a record behaves when one of its texts is read.
struct TextScript {
    std::string bytes; // what the second call writes, as far as the buffer goes; no NUL is added
    int32_t firstResult = 201;
    int32_t firstSize = 0; // stored by the first call, and the room that the second call counts on
    int32_t secondResult = 0;
    std::optional<int32_t> secondSize; // stored by the second call
};

struct NumberScript {
    int64_t value = 0;
    int32_t result = 0;
    bool writes = true;
};

// A key that is missing is answered by a failure.
struct RecordScript {
    NamedValues<TextScript> texts;
    NamedValues<NumberScript> numbers;
};

struct Operation;

struct EventScript {
    // The invalid arguments.
    bool nullReply = false;
    bool nullEvent = false;
    bool nullRules = false;
    bool noRules = false;

    uint32_t replyBefore = 0xDEADBEEF;
    RecordScript event;
    std::vector<RecordScript> rules; // at least one

    int32_t queryResult = 0;
    std::optional<std::string> answer; // ends at its first NUL, if it holds one
    bool unreadableAnswer = false;     // the answer is an address that nobody can read, instead of `answer`
    int32_t deleteResult = 0;
    int32_t freeResult = 0;
    int32_t reportResult = 0;

    // The operations of the host on the receiver during the call.
    std::vector<Operation> duringQuery;
    std::vector<Operation> duringFree;
    std::vector<Operation> duringDelete;
    std::vector<Operation> duringReport;
};

enum class OperationKind {
    Init, // number: which host, 0 or 1; 2 is a null host
    Uninit,
    GetProperty, // number: all three arguments
    SetNumber,   // property `key` to `number`
    SetText,     // property `key` to `text`
    SetNullData, // property `key`, without data
    SetZeroSize, // property `key` to `number`, the size 0
    Start,
    Stop,
    SetAllowList, // text
    ClearAllowList,
    SetReportSink,  // number: which sink, 0 or 1; 2 is null
    HandleEvent,    // event
    ChangeSiblings, // siblings: what they answer from now on
};

struct Operation {
    OperationKind kind = OperationKind::Start;
    uint32_t key = 0;
    uint32_t number = 0;
    std::string text;
    std::vector<EventScript> event; // one for HandleEvent, else none
    SiblingState siblings;
};

struct TestCase {
    SiblingState siblings;
    std::vector<Operation> operations;
};

} // namespace model
