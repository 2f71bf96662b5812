#include "unit/native/real/realChildFixture.h"

#include <windows.h>

std::string RealChildFixture::Program() const {
    return ProgramOf(child->Handle());
}

bool UnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}
