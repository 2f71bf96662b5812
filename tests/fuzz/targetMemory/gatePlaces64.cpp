// A 64-bit caller has no 64-bit half beside it.
#include "fuzz/targetMemory/memoryPlaces.h"

using namespace scripted;

void PrepareOnce() {}

void AskGate(const Text&) {}

std::vector<MemoryPlace> BuildGatePlaces() {
    return {};
}
