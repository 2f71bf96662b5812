// The body of a sibling library's CreateZelkObject.
#pragma once

#include <span>

#include "frame/interfaces.h"
#include "frame/sameIdentifier.h"
#include "serviceGuard.h"
#include "serviceResult.h"

namespace siblings {

// One service of a library. `make` returns a new object with one reference for the caller; it may throw. Services
// derive from their interface alone, so that the address of the root is that of the interface.
struct ServiceEntry {
    GUID id;
    ISmartUnknown* (*make)(const GUID& id);
};

// Makes the service that `iid` names and stores it in `*out`. On any other result than RESULT_OK (RESULT_NO_INTERFACE
// for an identifier that `services` does not hold, RESULT_OUT_OF_MEMORY) `*out` stays untouched.
inline uint32_t CreateService(std::span<const ServiceEntry> services, const GUID* iid, void** out) {
    for (const ServiceEntry& service : services) {
        if (SameIdentifier(*iid, service.id)) {
            return Guarded([&service, out] {
                *out = service.make(service.id);
                return RESULT_OK;
            });
        }
    }
    return RESULT_NO_INTERFACE;
}

// `make` for a service that is constructed from its identifier alone.
template <typename Service>
ISmartUnknown* MakeService(const GUID& id) {
    return new Service(id);
}

} // namespace siblings
