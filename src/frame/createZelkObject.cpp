// The one export. It makes the process's receiver at the first call and hands out its interface; this is the one place
// of the frame that includes upward.
#include "frame/interfaces.h"
#include "frame/sameIdentifier.h"
#include "mordRev/src/mordRev.h"

namespace {

// The receiver is made under a run-once guard: callers that come meanwhile wait, and an exception of the construction
// passes on and leaves the guard unset, so that a later call tries again. It is never destroyed.
CMordRecv* Instance() {
    static CMordRecv* const receiver = CMordRecv::ObjectCreator::Create();
    return receiver;
}

} // namespace

extern "C" MORD_EXPORT uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    if (!SameIdentifier(iid, IID_IMordRev)) {
        return RESULT_NO_INTERFACE;
    }
    IMordRev* const receiver = Instance();
    receiver->AddRef();
    receiver->QueryInterface(iid, out);
    receiver->Release();
    return RESULT_OK;
}
