// All services of the siblings.
#pragma once

#include <ostream>

#include "zelkBase/hostLog.h"

namespace siblingTest {

struct OfferedService {
    const char* name;
    const char* library;
    GUID id;
};

inline std::ostream& operator<<(std::ostream& out, const OfferedService& service) {
    return out << service.name;
}

inline constexpr OfferedService offered[] = {
    {"ModuleFinder", "ZelkBase", SID_ModuleFinder},
    {"BaseServiceOne", "ZelkBase", SID_BaseServiceOne},
    {"BaseServiceTwo", "ZelkBase", SID_BaseServiceTwo},
    {"BaseServiceThree", "ZelkBase", SID_BaseServiceThree},
    {"TextConverter", "ZelkBase", SID_TextConverter},
    {"MachineId", "ZelkBase", SID_MachineId},
    {"LogConfig", "ZelkBase", SID_LogConfig},
    {"LogWriter", "ZelkBase", SID_LogWriter},
    {"HostLog", "ZelkBase", SID_HostLog},
    {"FerrocoreService", "Ferrocore", SID_FerrocoreService},
};

} // namespace siblingTest
