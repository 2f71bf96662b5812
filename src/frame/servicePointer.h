// Owning pointer to a service: one reference, given back through Release.
#pragma once

#include "frame/factory.h"

template <typename Interface>
class ServicePointer {
public:
    constexpr ServicePointer() = default;
    ~ServicePointer() { Reset(); }
    ServicePointer(const ServicePointer&) = delete;
    ServicePointer& operator=(const ServicePointer&) = delete;

    // Releases what is held and asks `factory` for the service `id`. The pointer is null afterwards when the factory
    // refuses: its result code is never looked at.
    void Create(CreateZelkObjectFunction factory, const GUID& id) {
        Reset();
        factory(&id, reinterpret_cast<void**>(&m_service));
    }

    // Releases what is held, if anything.
    void Reset() {
        if (m_service != nullptr) {
            m_service->Release();
            m_service = nullptr;
        }
    }

    Interface* Get() const { return m_service; }
    Interface* operator->() const { return m_service; }
    explicit operator bool() const { return m_service != nullptr; }

private:
    Interface* m_service = nullptr;
};
