#include "frame/baseServices.h"

#include "frame/factory.h"

namespace {

CreateZelkObjectFunction FindLibraryFactory(const WideChar* library) {
    const platform::ModuleHandle module = platform::GetModuleHandleW(library);
    return module == nullptr ? nullptr : FindFactory(module);
}

} // namespace

CBaseServices* CBaseServices::Instance() {
    static auto* const holder = new CBaseServices; // never destroyed: its references last until the process ends
    return holder;
}

CBaseServices::CBaseServices() {
    BindFerrocore();
    BindZelkBase();
}

void CBaseServices::Bind() {
    if (!m_ferrocoreService) {
        BindFerrocore();
    }
    if (m_moduleFinder && m_baseServiceTwo && m_baseServiceOne && m_baseServiceThree) {
        return;
    }
    BindZelkBase();
}

void CBaseServices::BindFerrocore() {
    if (const auto factory = FindLibraryFactory(WIDE("Ferrocore.dll"))) {
        m_ferrocoreService.Create(factory, SID_FerrocoreService);
    }
}

// Binds all four anew, even those that are set.
void CBaseServices::BindZelkBase() {
    if (const auto factory = FindLibraryFactory(WIDE("ZelkBase.dll"))) {
        m_moduleFinder.Create(factory, SID_ModuleFinder);
        m_baseServiceTwo.Create(factory, SID_BaseServiceTwo);
        m_baseServiceOne.Create(factory, SID_BaseServiceOne);
        m_baseServiceThree.Create(factory, SID_BaseServiceThree);
    }
}
