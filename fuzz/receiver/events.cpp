// One event, of whose host's side an input tells everything.
#include "fuzz/receiver/receiverPair.h"
#include "fuzz/receiver/vocabulary.h"
#include "fuzz/targets.h"

namespace {

// The modes, the flags of the run and the answers of the host, from the front of an input.
struct EventInput {
    explicit EventInput(FuzzInput& input) {
        const auto options = input.Take<uint8_t>();
        started = (options & 1) == 0;
        script.hasAnswer = (options & 2) == 0;
        ruleCount = 1 + (options >> 2 & 3);
        switch (options >> 4 & 3) {
        case 0:
            script.queryCode = 0;
            break;
        case 1:
            script.queryCode = 1007;
            break;
        default:
            script.queryCode = input.Take<int16_t>();
        }
        const auto modes = input.Take<uint8_t>();
        defenderMode = modes & 7U;
        exceptionMode = modes >> 3 & 3U;
        if ((modes & 0x20) != 0) {
            script.deleteResult = input.Take<int16_t>();
            script.otherResult = input.Take<int8_t>();
        }
        if ((modes & 0x40) != 0) {
            script.actOnQuery = input.Take<uint8_t>();
            script.actOnFree = input.Take<uint8_t>();
            script.actOnDelete = input.Take<uint8_t>();
            script.actOnReport = input.Take<uint8_t>();
        }
    }

    HostScript script;
    bool started = true;
    uint32_t ruleCount = 1;
    uint32_t defenderMode = 0;
    uint32_t exceptionMode = 0;
};

void HandleOn(IMordRev& receiver, HostSide& side, const EventInput& event, const FuzzInput& records) {
    side.Begin(event.script, records);
    SetMode(receiver, PROP_DEFENDER_MODE, event.defenderMode);
    SetMode(receiver, PROP_EXCEPTION_MODE, event.exceptionMode);
    if (!event.started) {
        receiver.Stop();
    }
    side.HandleEvent(event.ruleCount);
}

// Lets both receivers handle the event, and afterwards one that is known.
void HandleEvents(const EventInput& event, const FuzzInput& records, bool withRecords) {
    ReceiverPair& pair = ReceiverPair::Instance();
    pair.Begin(withRecords);
    HandleOn(pair.library, pair.librarySide, event, records);
    HandleOn(pair.modelReceiver, pair.modelSide, event, records);
    pair.RequireTheSame();
    if (withRecords) {
        pair.RequireKnownMatches();
        pair.RequireKnownDecision();
        pair.RequireTheSame();
    }
}

} // namespace

void FuzzHostRecords(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    EventInput event(input);
    event.script.answer = knownAnswer;
    HandleEvents(event, input, IsOneIn(recordsOneIn, data, size));
}

void FuzzHostAnswers(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    EventInput event(input);
    const FuzzInput records = input.TakePart(input.Take<uint8_t>());
    event.script.answer = input.TakeRest();
    HandleEvents(event, records, IsOneIn(recordsOneIn, data, size));
}
