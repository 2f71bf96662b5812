#include "zelkBase/moduleFinder.h"

#include "zelkBase/ownLibrary.h"

namespace siblings {

void* ModuleFinder::FindModule(const WideChar* moduleKey) {
    return moduleKey != nullptr && WideView(moduleKey) == WIDE("module.base") ? OwnModule() : nullptr;
}

} // namespace siblings
