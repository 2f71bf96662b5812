// Ferrocore's only export, and the table of its services.
#include "heldService.h"
#include "serviceFactory.h"

namespace {

using namespace siblings;

constexpr ServiceEntry services[] = {
    {SID_FerrocoreService, MakeService<HeldService>},
};

} // namespace

extern "C" MORD_EXPORT uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    return CreateService(services, iid, out);
}
