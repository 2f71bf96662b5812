// WOW64 file-system redirection, switched off for a scope.
#pragma once

#include <cstdint>

// A system without redirection, or without the functions, is left as it is; nothing is reported. To be used on one
// thread.
class CAutoWow64PauseDisable {
public:
    CAutoWow64PauseDisable();
    virtual ~CAutoWow64PauseDisable();
    CAutoWow64PauseDisable(const CAutoWow64PauseDisable&) = delete;
    CAutoWow64PauseDisable& operator=(const CAutoWow64PauseDisable&) = delete;

    // Whether redirection was switched off, and so is given back at the end.
    bool Disabled() const { return disabled != 0; }

private:
    void* savedValue = nullptr; // what the platform wants back
    int32_t disabled = 0;       // the platform's result
};
