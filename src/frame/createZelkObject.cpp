// The library's only export. It creates the receiver of the process at the first call and returns its interface. This
// is the only file of the frame that includes a higher layer.
#include "frame/interfaces.h"
#include "frame/sameIdentifier.h"
#include "mordRev/src/mordRev.h"

namespace {

// The compiler guards the static variable: concurrent first callers wait. If the constructor throws, the exception
// reaches the caller, and a later call tries again. The receiver is never destroyed.
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
