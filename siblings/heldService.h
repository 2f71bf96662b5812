// A service that the component holds without calling it.
#pragma once

#include "serviceObject.h"

namespace siblings {

// A reference-counted object that QueryInterface accepts its own identifier for. It has no other operation: the
// component needs none.
class HeldService final : public ServiceObject<HeldService, ISmartUnknown> {
public:
    explicit HeldService(const GUID& id) : ServiceObject(id) {}

private:
    friend ServiceObject;
    ~HeldService() = default;
};

} // namespace siblings
