#include "abi/msvcHost/service.h"

namespace {

constinit HeldService service("Ferrocore's service");

} // namespace

extern "C" __declspec(dllexport) uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    if (!IsService(iid, SID_FerrocoreService)) {
        return 0x80004002;
    }
    *out = static_cast<ISmartUnknown*>(&service);
    return 0;
}
