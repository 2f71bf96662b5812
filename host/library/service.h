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

// What a library makes its services by. A class, since compilers do not agree on the name of a function that takes such
// a pointer.
class ServiceFactory {
public:
    explicit ServiceFactory(CreateZelkObjectFunction create) : m_create(create) {}

    // The service `id`; null when the library has none.
    template <typename Interface>
    Service<Interface> Make(const GUID& id) const {
        void* object = nullptr;
        const bool made = m_create(&id, &object) == RESULT_OK;
        return Service<Interface>(made ? static_cast<Interface*>(object) : nullptr);
    }

private:
    CreateZelkObjectFunction m_create;
};

} // namespace mordhost
