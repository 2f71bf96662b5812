// One event whose host's side is driven by an input.
#include "fuzz/expansion.h"
#include "fuzz/receiver/receiverPair.h"
#include "fuzz/receiver/vocabulary.h"
#include "fuzz/targets.h"

namespace {

// The rules, the modes and the host's result codes, from the front of an input.
struct EventInput {
    EventInput(FuzzInput& input, bool atFullScale) {
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
        if ((options & 0xCC) == 0xCC) {
            const unsigned more = input.Take<uint8_t>();
            ruleCount += atFullScale ? 2 * more : more % 8;
            script.repeatsRecords = true;
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
    uint32_t ruleCount = 1; // up to 514
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

// Lets both receivers handle the event, and for some inputs a known event after it.
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
    EventInput event(input, IsOneIn(scaleOneIn, data, size));
    event.script.answer = knownAnswer;
    HandleEvents(event, input, IsOneIn(recordsOneIn, data, size));
}

void FuzzHostAnswers(const uint8_t* data, size_t size) {
    const bool atFullScale = IsOneIn(scaleOneIn, data, size);
    FuzzInput input(data, size);
    EventInput event(input, atFullScale);
    const FuzzInput records = input.TakePart(input.Take<uint8_t>());
    event.script.answer = Expand(data + size - input.Left(), input.Left(), atFullScale);
    HandleEvents(event, records, IsOneIn(recordsOneIn, data, size));
}
