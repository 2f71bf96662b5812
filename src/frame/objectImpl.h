// The object model of the component: the root class of objects, and the template that implements one for a class, a
// locker policy and a creator policy.
#pragma once

#include <atomic>
#include <cstdint>

namespace Base {

// Root of the object classes. Its two operations are the frame's contract with the creator policies.
class CZelkObjectBase {
public:
    CZelkObjectBase() = default;
    CZelkObjectBase(const CZelkObjectBase&) = delete;
    CZelkObjectBase& operator=(const CZelkObjectBase&) = delete;

    virtual void ObjectHook() {}
    virtual void DestroySelf() = 0;

protected:
    ~CZelkObjectBase() = default; // objects are destroyed as what they are, by their creator policy

    // Raised at each successful QueryInterface. Nothing lowers it and nothing acts on it: the one object of the process
    // outlives all references.
    std::atomic<int32_t> m_refCount{0};
};

// Locker policy that locks nothing.
class empty_locker {};

// Creator policy: the heap.
template <typename Class>
struct default_object_creator {
    static Class* Create() { return new Class; }
    static void Destroy(Class* object) { delete object; }
};

// `Creator` makes and destroys the object; the template only carries it.
template <typename Class, typename Locker, typename Creator>
class CZelkObjectImpl : public CZelkObjectBase, public Locker {
public:
    using ObjectCreator = Creator;

    void ObjectHook() override {}

protected:
    ~CZelkObjectImpl() = default;
};

} // namespace Base
