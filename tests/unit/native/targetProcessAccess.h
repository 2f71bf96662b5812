// What tests reach of a TargetProcess beside its operations.
#pragma once

#include <memory>

#include "native/targetProcess.h"

struct TargetProcessAccess {
    TargetProcess& object;

    // Puts another variant in the place of the one that was chosen.
    void SetVariant(std::unique_ptr<Native> variant) { object.SwapAccess(variant); }

    std::shared_ptr<const TheradData> ReadThread32(uint32_t id) { return object.ReadThread32(id); }
    std::shared_ptr<const TheradData> ReadThread64(uint32_t id) { return object.ReadThread64(id); }
};
