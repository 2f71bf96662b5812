// A host for event threads. What a thread sees stays with that thread, without a lock and without an atomic: the only
// order among the threads of a race test is the one that the receiver makes itself.
#pragma once

#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "race/directSiblings.h"

namespace race {

// What came out of one event, from every side.
struct Outcome {
    bool result = false;
    uint32_t reply = 77;
    int deletions = 0;
    std::vector<std::string> reports;
    std::vector<std::string> records; // messages alone; none with logging off
};

// Answers queries, all threads' alike; keeps the calls of a thread in that thread's outcome.
class RaceHost final : public IDotHost, public IReportSink {
public:
    int32_t queryResult = 0;
    uint32_t errorEvery = 0; // every so many queries of a thread meet a network error; 0 for none
    std::string answer;

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override;
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override;
    int32_t FreeResult(char* result) override;
    int32_t Report(int32_t kind, const char* text, uint32_t size) override;
};

// Hands one event with one rule of type "dns" and guid "g" to the receiver, on the calling thread.
Outcome HandleOneEvent(IMordRev& receiver);

} // namespace race
