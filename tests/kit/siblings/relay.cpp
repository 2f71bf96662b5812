// A library in the place of a sibling: its factory hands each request on to the test program, where the services are.
#include "frame/interfaces.h"
#include "frame/values.h"

namespace {

CreateZelkObjectFunction target = nullptr;

} // namespace

extern "C" MORD_EXPORT void MORD_CDECL SetRelayTarget(CreateZelkObjectFunction factory) {
    target = factory;
}

extern "C" MORD_EXPORT uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    return target == nullptr ? RESULT_NO_INTERFACE : target(iid, out);
}
