#include "frame/serviceLookup.h"

#include "frame/baseServices.h"
#include "frame/factory.h"

namespace {

const WideChar* const moduleKey = WIDE("module.base");

} // namespace

CreateZelkObjectFunction FindBaseModuleFactory() {
    CBaseServices* const services = CBaseServices::Instance();
    services->Bind();
    if (!services->m_moduleFinder) {
        return nullptr;
    }
    const platform::ModuleHandle module = services->m_moduleFinder->FindModule(moduleKey);
    return module == nullptr ? nullptr : FindFactory(module);
}
