// What every service of a sibling library is: an object that counts its references and deletes itself.
#pragma once

#include <atomic>
#include <cstdint>

#include "frame/interfaces.h"
#include "frame/sameIdentifier.h"
#include "serviceResult.h"

namespace siblings {

// Base of the service `Service`, which implements `Interface` and must be final. An object is made on the heap, with
// one reference that belongs to whoever made it. AddRef and Release return the number of references after the call and
// may be called from any thread; the release of the last one deletes the object, on the thread that calls it.
//
// The destructor of a service may run while the process ends: it must neither wait nor take a lock.
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

    // A service answers its own identifier and no other.
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
