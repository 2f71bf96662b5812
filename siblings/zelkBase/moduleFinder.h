// IModuleFinder: finds modules by key.
#pragma once

#include "serviceObject.h"

namespace siblings {

// Knows one key, "module.base", which means this library itself. FindModule returns null for any other key and for
// null. Keys are compared as a whole and case-sensitively. Any thread may call; nothing is logged.
class ModuleFinder final : public ServiceObject<ModuleFinder, IModuleFinder> {
public:
    explicit ModuleFinder(const GUID& id = SID_ModuleFinder) : ServiceObject(id) {}

    void* FindModule(const WideChar* moduleKey) override;

private:
    friend ServiceObject;
    ~ModuleFinder() = default;
};

} // namespace siblings
