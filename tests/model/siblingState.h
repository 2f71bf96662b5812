// What the sibling libraries answer while an object is initialised.
#pragma once

#include <cstdint>
#include <string>

namespace model {

struct SiblingState {
    bool settlesLogging = true;     // whether the base library gives its log settings
    bool logs = true;               // whether records go anywhere; the same for the whole life of a process
    bool tellsSettings = true;      // whether the log settings are where the base library says that they are
    int32_t machineIdResult = 0;    // of the machine id service
    std::string machineId = "HOST"; // what the service delivers, plain ASCII
};

} // namespace model
