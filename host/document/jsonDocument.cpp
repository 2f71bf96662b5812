#include "document/jsonDocument.h"

#include "document/jsonPointer.h"

namespace mordhost {

DocumentPlace JsonDocument::PlaceAt(size_t offset) const {
    return {m_source.At(offset), offset, PointerAt(m_root, offset)};
}

} // namespace mordhost
