// A library that exports no factory under its name and depends on one that does: Ferrocore.
#include "frame/interfaces.h"

extern "C" uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out);

// Calls the factory that it depends on.
extern "C" MORD_EXPORT uint32_t MORD_CDECL BorrowedFactory(const GUID* iid, void** out) {
    return CreateZelkObject(iid, out);
}
