// The object model of the component: the root class of its objects, and a template that implements an object for a
// class, a locker policy and a creator policy.
#pragma once

#include <atomic>
#include <cstdint>

namespace Base {

// Root class. The library never calls its two operations; they are the contract between the frame and a creator policy.
class CZelkObjectBase {
public:
    CZelkObjectBase() = default;
    CZelkObjectBase(const CZelkObjectBase&) = delete;
    CZelkObjectBase& operator=(const CZelkObjectBase&) = delete;

    // A hook for the creator policy. Does nothing.
    virtual void ObjectHook() {}
    // Destroys the object and frees its memory.
    virtual void DestroySelf() = 0;

protected:
    ~CZelkObjectBase() = default; // a creator policy destroys the most derived class

    // Incremented by each successful QueryInterface. Nothing decrements or reads it: the process-wide object outlives
    // all references.
    std::atomic<int32_t> m_refCount{0};
};

// Locker policy without a lock.
class empty_locker {};

// Creator policy that uses the heap. Create throws std::bad_alloc and what the constructor throws.
template <typename Class>
struct default_object_creator {
    static Class* Create() { return new Class; }
    static void Destroy(Class* object) { delete object; }
};

// `Creator` creates and destroys the object, `Locker` is a base class. The template only makes both known to users.
template <typename Class, typename Locker, typename Creator>
class CZelkObjectImpl : public CZelkObjectBase, public Locker {
public:
    using ObjectCreator = Creator;

    void ObjectHook() override {}

protected:
    ~CZelkObjectImpl() = default;
};

} // namespace Base
