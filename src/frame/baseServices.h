// The services of the sibling libraries that the component holds.
#pragma once

#include "frame/servicePointer.h"

// The process-wide holder. Each field owns one reference, or is null while its library is not loaded or refuses.
// Nothing here logs or fails: a null field tells the failure, and its user decides what that means.
//
// Bind takes no lock. It runs within Init, on the caller's thread, and not from two threads at once.
class CBaseServices {
public:
    CBaseServices(const CBaseServices&) = delete;
    CBaseServices& operator=(const CBaseServices&) = delete;

    // The one holder; the first call, from any thread, makes it. It is never destroyed.
    static CBaseServices* Instance();

    // Brings the bindings up to date. Called before each use of a field, so that a library that is loaded late is found
    // at the next use.
    void Bind();

    ServicePointer<ISmartUnknown> m_baseServiceOne;
    ServicePointer<ISmartUnknown> m_baseServiceTwo;
    ServicePointer<IModuleFinder> m_moduleFinder;
    ServicePointer<ISmartUnknown> m_ferrocoreService;
    ServicePointer<ISmartUnknown> m_baseServiceThree;

private:
    CBaseServices();
    ~CBaseServices() = default;

    void BindFerrocore();
    void BindZelkBase();
};
