// A library under the name of a sibling. Its factory passes each request to the program that loaded it.
#include "frame/interfaces.h"

namespace {

CreateZelkObjectFunction target = nullptr;

} // namespace

extern "C" MORD_EXPORT void MORD_CDECL SetRelayTarget(CreateZelkObjectFunction factory) {
    target = factory;
}

extern "C" MORD_EXPORT uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    return target(iid, out);
}
