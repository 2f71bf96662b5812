// Owning pointer to a service: one reference, given back with Release. Not thread-safe. `Interface` derives from
// ISmartUnknown.
#pragma once

#include "frame/factory.h"

template <typename Interface>
class ServicePointer {
public:
    constexpr ServicePointer() = default;
    ~ServicePointer() { Reset(); }
    ServicePointer(const ServicePointer&) = delete;
    ServicePointer& operator=(const ServicePointer&) = delete;

    // Releases the current service and asks `factory` for the service `id`. The pointer is null afterwards if the
    // factory refuses; its result code is ignored. `factory` must not be null.
    void Create(CreateZelkObjectFunction factory, const GUID& id) {
        Reset();
        factory(&id, reinterpret_cast<void**>(&m_service));
    }

    // Releases the current service, if there is one.
    void Reset() {
        if (m_service != nullptr) {
            m_service->Release();
            m_service = nullptr;
        }
    }

    // Borrowed; null while no service is held. operator-> needs a service.
    Interface* Get() const { return m_service; }
    Interface* operator->() const { return m_service; }
    explicit operator bool() const { return m_service != nullptr; }

private:
    Interface* m_service = nullptr;
};
