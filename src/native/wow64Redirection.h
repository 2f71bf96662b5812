// A scope without WOW64 file-system redirection.
#pragma once

#include <cstdint>

// Disables redirection for the calling thread and restores it in the destructor, which must run on the same thread.
// Does nothing on a system without redirection or without the functions for it. Throws and logs nothing. The library
// does not use it itself.
class CAutoWow64PauseDisable {
public:
    CAutoWow64PauseDisable();
    virtual ~CAutoWow64PauseDisable();
    CAutoWow64PauseDisable(const CAutoWow64PauseDisable&) = delete;
    CAutoWow64PauseDisable& operator=(const CAutoWow64PauseDisable&) = delete;

    // Returns whether the constructor disabled redirection.
    bool Disabled() const { return disabled != 0; }

private:
    void* savedValue = nullptr; // state that the platform restores
    int32_t disabled = 0;       // result of the platform's function; not 0 on success
};
