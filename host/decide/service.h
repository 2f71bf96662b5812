// Services of the sibling libraries.
#pragma once

#include <memory>

#include "frame/interfaces.h"
#include "frame/values.h"

namespace mordhost {

// Owns one reference to a service.
struct ReleaseService {
    void operator()(ISmartUnknown* service) const { service->Release(); }
};
template <typename Interface>
using Service = std::unique_ptr<Interface, ReleaseService>;

// Creates the services of a library. A class, because compilers mangle a function with such a pointer parameter
// differently.
class ServiceFactory {
public:
    explicit ServiceFactory(CreateZelkObjectFunction create) : m_create(create) {}

    // Creates the service `id`. Returns null if the library does not have it.
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
