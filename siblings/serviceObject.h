// The base of every service of a sibling library: a reference-counted object.
#pragma once

#include <atomic>
#include <cstdint>

#include "frame/interfaces.h"
#include "frame/sameIdentifier.h"
#include "serviceResult.h"

namespace siblings {

// Base of `Service`, a final class that implements `Interface`. Objects are on the heap and start with one reference,
// which belongs to the creator. AddRef and Release return the number of references after the call. Any thread may call
// them; the last Release deletes the object on its thread.
//
// The destructor of a service can run while the process ends: it must neither wait nor take a lock.
template <typename Service, typename Interface>
class ServiceObject : public Interface {
public:
    ServiceObject(const ServiceObject&) = delete;
    ServiceObject& operator=(const ServiceObject&) = delete;

    int32_t AddRef() final { return m_references.fetch_add(1, std::memory_order_relaxed) + 1; }

    int32_t Release() final {
        const int32_t left = m_references.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            delete static_cast<Service*>(this);
        }
        return left;
    }

    // Accepts the identifier of the service only. Any thread may call.
    uint32_t QueryInterface(const GUID* iid, void** out) final {
        if (!SameIdentifier(*iid, m_id)) {
            return RESULT_NO_INTERFACE;
        }
        AddRef();
        *out = static_cast<Interface*>(this);
        return RESULT_OK;
    }

protected:
    explicit ServiceObject(const GUID& id) : m_id(id) {}
    ~ServiceObject() = default;

private:
    const GUID m_id;
    std::atomic<int32_t> m_references{1};
};

} // namespace siblings
