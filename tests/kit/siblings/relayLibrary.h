// Relay libraries under the names of the siblings: they pass requests to a factory in the test program.
#pragma once

#include <cstring>

#include "frame/interfaces.h"
#include "kit/siblings/dynamicLibrary.h"

namespace kit {

// Loads the relay `name`, such as "ZelkBase", and sets its factory. Throws std::runtime_error if it cannot be loaded.
inline DynamicLibrary LoadRelay(const char* name, CreateZelkObjectFunction factory) {
    DynamicLibrary relay(ProgramFolder() / "siblings" / LibraryFile(name));
    const auto setTarget =
        reinterpret_cast<void(MORD_CDECL*)(CreateZelkObjectFunction)>(relay.Symbol("SetRelayTarget"));
    setTarget(factory);
    return relay;
}

// The member of `services` for this id; `others` for an unknown id.
template <typename Services>
void* FindService(Services& services, const GUID& id) {
    const auto is = [&id](const GUID& known) { return std::memcmp(&id, &known, sizeof id) == 0; };
    if (is(SID_ModuleFinder)) {
        return static_cast<IModuleFinder*>(&services.finder);
    }
    if (is(SID_TextConverter)) {
        return static_cast<ITextConverter*>(&services.converter);
    }
    if (is(SID_MachineId)) {
        return static_cast<IMachineIdService*>(&services.machineId);
    }
    if (is(SID_LogConfig)) {
        return static_cast<ILogConfig*>(&services.logConfig);
    }
    if (is(SID_LogWriter)) {
        return static_cast<ILogWriter*>(&services.logWriter);
    }
    return static_cast<ISmartUnknown*>(&services.others);
}

} // namespace kit
