#include "moduleReads.h"

#include "native/remoteLayouts.h"

namespace mordinspect {

void ModuleReads::Take(const Request& read, const void* content) {
    if (read.number == 1) {
        return; // the loader data
    }
    switch ((read.number - 2) % 3) {
    case 0: {
        const size_t name = m_kind == ModuleKind32 ? Bits32::entryFullDllName : Bits64::entryFullDllName;
        const auto length = LoadField<uint16_t>(content, name + unicodeStringLength);
        m_entries.push_back({read.status, STATUS_OF_SUCCESS, length > moduleNameSize});
        break;
    }
    case 1:
        m_entries.back().name = read.status;
        break;
    default: // the link
        break;
    }
}

} // namespace mordinspect
