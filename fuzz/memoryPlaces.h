// The places of a target's memory, and of the caller's own 64-bit half, that a fuzzed input changes.
#pragma once

#include <vector>

#include "fuzz/input.h"
#include "kit/system/scriptedProcess/processImage.h"

// Finds, once, what the library keeps for the life of the process, while everything is well-formed: a finding then
// depends on its input alone.
void PrepareOnce();

// Asks for what the caller's own 64-bit half tells. Does nothing for a 64-bit caller, which has none.
void AskGate(const scripted::Text& name);

struct MemoryPlace {
    scripted::TargetMemory* memory;
    uint64_t address;
    size_t size;
};

// The places of the caller's own 64-bit half, well-formed; none for a 64-bit caller.
std::vector<MemoryPlace> BuildGatePlaces();

// Made once in a process and used for every input: to build the structures takes far more time than to ask for them.
class MemoryPlaces {
public:
    // Builds a well-formed target with three modules in each list, and the caller's own 64-bit half.
    explicit MemoryPlaces(scripted::Process& target);

    // Makes one change: bytes of a place, a link to another place, or a range that comes or goes.
    void Change(FuzzInput& input);

    // Takes all changes back.
    void Restore();

    // Whether all is as it was built, byte for byte. Takes the time of many inputs.
    bool AreAsBuilt() const;

private:
    template <typename P>
    void Build(scripted::ProcessImage<P>& image);

    scripted::Process& m_target;
    std::vector<MemoryPlace> m_places;
    std::vector<scripted::TargetMemory*> m_memories; // those in which the places are
    std::vector<scripted::TargetMemory::Ranges> m_built;
};
