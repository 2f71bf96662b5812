// The services of the sibling libraries that the component holds references on.
#pragma once

#include "frame/servicePointer.h"

// The process-wide holder. Each field owns one reference; it is null while its library is not loaded or its factory
// refuses the service. The component calls m_moduleFinder only; it holds the other four.
//
// Nothing here fails, logs or throws, except std::bad_alloc from the first Instance call. A null field is the only sign
// of a failure.
//
// Bind takes no lock. Only Init calls it, on the caller's thread, and two threads must not call it at once.
class CBaseServices {
public:
    CBaseServices(const CBaseServices&) = delete;
    CBaseServices& operator=(const CBaseServices&) = delete;

    // Returns the holder and creates it at the first call. Any thread may call. The holder is never destroyed.
    static CBaseServices* Instance();

    // Binds what is not bound yet. If one of the ZelkBase fields other than m_baseServiceThree is null, all four are
    // bound anew. Call it before each use of a field: it finds a library that was loaded since.
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
