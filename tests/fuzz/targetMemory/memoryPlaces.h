// The places of a target's memory, and of the caller's own 64-bit half, that an input changes.
#pragma once

#include <vector>

#include "fuzz/input.h"
#include "kit/system/scriptedProcess/processImage.h"

// Lets the library find, from well-formed memory, everything that it keeps for the life of the process. The result of
// an input then does not depend on earlier inputs. Does nothing from the second call on.
void PrepareOnce();

// Runs the operations on the caller's own 64-bit half. Does nothing for a 64-bit caller, which has none.
void AskGate(const scripted::Text& name);

struct MemoryPlace {
    scripted::TargetMemory* memory;
    uint64_t address;
    size_t size;
};

// The places of the caller's own 64-bit half, well-formed; none for a 64-bit caller.
std::vector<MemoryPlace> BuildGatePlaces();

// Made once in a process and used for every input, because building the structures takes far more time than reading
// them.
class MemoryPlaces {
public:
    // Builds a well-formed target with three modules in each list, and the caller's own 64-bit half.
    explicit MemoryPlaces(scripted::Process& target);

    // Makes one change: other bytes in a place, a pointer to another place, a range mapped or unmapped.
    void Change(FuzzInput& input);

    // Undoes all changes.
    void Restore();

    // Whether the memory is as it was built, byte for byte. Takes the time of many inputs.
    bool AreAsBuilt() const;

private:
    template <typename P>
    void Build(scripted::ProcessImage<P>& image);

    scripted::Process& m_target;
    std::vector<MemoryPlace> m_places;
    std::vector<scripted::TargetMemory*> m_memories; // which contain the places
    std::vector<scripted::TargetMemory::Ranges> m_built;
};
