// A service of a sibling library as a class of this ABI, over the library's own public headers: hosts and siblings that
// are built elsewhere can use them unchanged.
#pragma once

#include "abi/msvcHost/freestanding.h"
#include "frame/interfaces.h"

// Prints its release; the other operations of the root interface are not called.
template <typename Interface>
class Service : public Interface {
public:
    constexpr explicit Service(const char* name) : m_name(name) {}

    int32_t AddRef() override { Fail("AddRef"); }
    int32_t Release() override {
        PrintLine(m_name, ": Release");
        return 0;
    }
    uint32_t QueryInterface(const GUID*, void**) override { Fail("QueryInterface"); }

protected:
    [[noreturn]] void Fail(const char* operation) const {
        PrintLine("must not be called: ", operation, " of ", m_name);
        ExitProcess(70);
    }

    const char* m_name;
};

// A service that is held and never called.
class HeldService final : public Service<ISmartUnknown> {
public:
    using Service::Service;
};

inline bool IsService(const GUID* iid, const GUID& id) {
    const auto* const left = reinterpret_cast<const uint32_t*>(iid);
    const auto* const right = reinterpret_cast<const uint32_t*>(&id);
    return left[0] == right[0] && left[1] == right[1] && left[2] == right[2] && left[3] == right[3];
}
