/* Ferrocore: one service, which is held and never used. */
#include "fakeSibling.h"

SERVICE_UNKNOWN(Service, FerrocoreService)
RESERVED_SLOT(FerrocoreService, 3)

static const ServiceSlots slots = {
    ServiceAddRef,
    ServiceRelease,
    ServiceQueryInterface,
    {FerrocoreServiceSlot3, FerrocoreServiceSlot3, FerrocoreServiceSlot3, FerrocoreServiceSlot3},
};
static Service service = {&slots};

ABI_EXPORT uint32_t ABI_FACTORY CreateZelkObject(const Guid* iid, void** out);
ABI_EXPORT uint32_t ABI_FACTORY CreateZelkObject(const Guid* iid, void** out) {
    static const KnownService services[] = {{"{427FB576-CFB6-4786-940D-E1D00E5521BA}", &service}};
    return FindService("Ferrocore", services, 1, iid, out);
}
