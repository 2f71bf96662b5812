// A 64-bit caller has no other half.
#include "fuzz/memoryPlaces.h"

using namespace scripted;

void PrepareOnce() {}

void AskGate(const Text&) {}

std::vector<MemoryPlace> BuildGatePlaces() {
    return {};
}
