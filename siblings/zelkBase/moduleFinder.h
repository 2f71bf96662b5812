// IModuleFinder: modules by key.
#pragma once

#include "serviceObject.h"

namespace siblings {

// Knows one key, "module.base", which stands for this library itself; null for every other, and for a null key. Keys
// are compared whole, with regard to case. Any thread may call.
class ModuleFinder final : public ServiceObject<ModuleFinder, IModuleFinder> {
public:
    explicit ModuleFinder(const GUID& id = SID_ModuleFinder) : ServiceObject(id) {}

    void* FindModule(const WideChar* moduleKey) override;

private:
    friend ServiceObject;
    ~ModuleFinder() = default;
};

} // namespace siblings
