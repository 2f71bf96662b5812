#include "native/wow64Redirection.h"

#include "platform/callConv.h"
#include "platform/platform.h"

namespace {

using DisableFunction = int32_t(MORD_STDCALL*)(void** savedValue);
using RevertFunction = int32_t(MORD_STDCALL*)(void* savedValue);

template <typename Function>
Function FindInKernel32(const char* name) {
    const platform::ModuleHandle kernel32 = platform::GetModuleHandleW(WIDE("Kernel32.dll"));
    return kernel32 == nullptr ? nullptr : reinterpret_cast<Function>(platform::GetProcAddress(kernel32, name));
}

} // namespace

CAutoWow64PauseDisable::CAutoWow64PauseDisable() {
    static const auto disable = FindInKernel32<DisableFunction>("Wow64DisableWow64FsRedirection");
    if (disable != nullptr) {
        disabled = disable(&savedValue);
    }
}

CAutoWow64PauseDisable::~CAutoWow64PauseDisable() {
    if (disabled == 0) {
        return;
    }
    static const auto revert = FindInKernel32<RevertFunction>("Wow64RevertWow64FsRedirection");
    if (revert != nullptr) {
        revert(savedValue);
    }
}
