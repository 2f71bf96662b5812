// Services of the sibling libraries, as a host holds them.
#pragma once

#include <memory>

#include "frame/interfaces.h"
#include "frame/values.h"

namespace mordhost {

// One reference on a service.
struct ReleaseService {
    void operator()(ISmartUnknown* service) const { service->Release(); }
};
template <typename Interface>
using Service = std::unique_ptr<Interface, ReleaseService>;

// The service `id` of the library whose factory this is; null when it has none.
template <typename Interface>
Service<Interface> MakeService(CreateZelkObjectFunction factory, const GUID& id) {
    void* object = nullptr;
    const bool made = factory(&id, &object) == RESULT_OK;
    return Service<Interface>(made ? static_cast<Interface*>(object) : nullptr);
}

} // namespace mordhost
