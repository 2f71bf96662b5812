// Owns one reference to a service.
#pragma once

#include <utility>

#include "frame/interfaces.h"

namespace siblingTest {

template <typename Interface>
class ServiceHolder {
public:
    ServiceHolder() = default;
    explicit ServiceHolder(Interface* service) : m_service(service) {}
    ~ServiceHolder() {
        if (m_service != nullptr) {
            m_service->Release();
        }
    }
    ServiceHolder(ServiceHolder&& other) noexcept : m_service(std::exchange(other.m_service, nullptr)) {}
    ServiceHolder& operator=(ServiceHolder&&) = delete;

    Interface* operator->() const { return m_service; }
    Interface* Get() const { return m_service; }

private:
    Interface* m_service = nullptr;
};

} // namespace siblingTest
