// A service that the component binds and holds, and of which it calls nothing but the counting.
#pragma once

#include "serviceObject.h"

namespace siblings {

// A reference-counted object that answers its identifier. It does nothing more: nothing more is asked of it.
class HeldService final : public ServiceObject<HeldService, ISmartUnknown> {
public:
    explicit HeldService(const GUID& id) : ServiceObject(id) {}

private:
    friend ServiceObject;
    ~HeldService() = default;
};

} // namespace siblings
