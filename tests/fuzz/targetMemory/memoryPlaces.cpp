#include "fuzz/targetMemory/memoryPlaces.h"

#include <algorithm>
#include <stdexcept>

using namespace scripted;

MemoryPlaces::MemoryPlaces(Process& target) : m_target(target) {
    ProcessImage<uint32_t> image32;
    ProcessImage<uint64_t> image64;
    Build(image32);
    Build(image64);
    target.peb32 = image32.pebAddress;
    target.peb64 = image64.pebAddress;
    const auto own = BuildGatePlaces();
    m_places.insert(m_places.end(), own.begin(), own.end());
    for (const MemoryPlace& place : m_places) {
        if (std::find(m_memories.begin(), m_memories.end(), place.memory) == m_memories.end()) {
            m_memories.push_back(place.memory);
            m_built.push_back(place.memory->Contents());
            place.memory->RememberChanges();
        }
    }
}

template <typename P>
void MemoryPlaces::Build(ProcessImage<P>& image) {
    TargetMemory& memory = m_target.memory;
    image.AddText(memory, 2, WIDE("C:\\dir\\File.exe"));
    const std::vector<LoadedModule> modules = {{0x400000, 0x5000, WIDE("C:\\dir\\File.exe")},
                                               {0x77000000, 0x1000, WIDE("a")},
                                               {0x78000000, 0x1000, WIDE("b")}};
    image.AddModules(memory, modules);
    image.peb.ImageBaseAddress = 0x400000;
    image.Map(memory);
    image.Put(memory);
    m_places.push_back({&memory, image.pebAddress, 0x40}); // only its beginning is read
    m_places.push_back({&memory, image.parametersAddress, sizeof image.parameters});
    m_places.push_back({&memory, image.ldrAddress, sizeof image.ldr});
    for (size_t i = 0; i < modules.size(); ++i) {
        m_places.push_back({&memory, image.EntryAddress(i), sizeof(published::LdrDataTableEntry<P>)});
        m_places.push_back({&memory, image.NameAddress(i), modules[i].path.size() * sizeof(WideChar)});
    }
}

void MemoryPlaces::Restore() {
    for (TargetMemory* const memory : m_memories) {
        memory->UndoChanges();
    }
}

bool MemoryPlaces::AreAsBuilt() const {
    return std::equal(m_memories.begin(), m_memories.end(), m_built.begin(), m_built.end(),
                      [](const TargetMemory* memory, const auto& built) { return memory->Contents() == built; });
}

void MemoryPlaces::Change(FuzzInput& input) {
    const auto kind = input.Take<uint8_t>();
    const MemoryPlace place = m_places[input.Take<uint8_t>() % m_places.size()];
    const size_t offset = input.Take<uint8_t>() % place.size;
    const size_t room = place.size - offset;
    try {
        switch (kind % 4) {
        case 0: {
            const std::string bytes = input.TakeBytes(room);
            place.memory->Write(place.address + offset, bytes.data(), bytes.size());
            break;
        }
        case 1: {
            const MemoryPlace& to = m_places[input.Take<uint8_t>() % m_places.size()];
            const uint64_t link = to.address + input.Take<uint8_t>();
            const size_t width = (kind & 4) != 0 ? sizeof link : sizeof(uint32_t);
            place.memory->Write(place.address + offset, &link, std::min(width, room));
            break;
        }
        case 2: {
            // A range at the address in a field of the place, or anywhere.
            uint64_t address = 0;
            if ((kind & 4) != 0) {
                const size_t width = (kind & 8) != 0 ? sizeof address : sizeof(uint32_t);
                place.memory->Read(place.address + offset, &address, std::min(width, room));
            } else {
                address = input.Take<uint64_t>();
            }
            const size_t size = size_t{input.Take<uint16_t>()} * 2;
            const std::string bytes = input.TakeBytes(size);
            place.memory->Map(address, size);
            place.memory->Write(address, bytes.data(), bytes.size());
            break;
        }
        default:
            place.memory->Unmap(place.address);
            break;
        }
    } catch (const std::logic_error&) {
        // Earlier changes make this one impossible: it is left out.
    }
}
