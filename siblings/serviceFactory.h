// Implements CreateZelkObject of a sibling library.
#pragma once

#include <span>

#include "frame/interfaces.h"
#include "frame/sameIdentifier.h"
#include "serviceGuard.h"
#include "serviceResult.h"

namespace siblings {

// A service of a library. `make` returns a new object with one reference for the caller and may throw. A service
// derives from its interface only, so that ISmartUnknown and the interface have the same address.
struct ServiceEntry {
    GUID id;
    ISmartUnknown* (*make)(const GUID& id);
};

// Creates the service `iid`, stores it in `*out` with a reference for the caller and returns RESULT_OK. Otherwise
// leaves `*out` unchanged and returns RESULT_NO_INTERFACE if `services` lacks the identifier, RESULT_OUT_OF_MEMORY, or
// RESULT_FAILED for any other exception of `make`. Neither pointer may be null. Any thread may call.
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

// A `make` for services with a constructor that takes the identifier.
template <typename Service>
ISmartUnknown* MakeService(const GUID& id) {
    return new Service(id);
}

} // namespace siblings
