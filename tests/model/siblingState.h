// What the sibling libraries answer during Init.
#pragma once

#include <cstdint>
#include <string>

namespace model {

struct SiblingState {
    bool settlesLogging = true;     // false: the base library refuses its log settings
    bool writesLog = true;          // the ini file has WriteLog=1; otherwise there is no ini file
    int32_t machineIdResult = 0;    // of the machine id service
    std::string machineId = "HOST"; // what the service delivers, plain ASCII
};

} // namespace model
