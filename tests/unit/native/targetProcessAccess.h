// Access of tests to the private parts of a TargetProcess.
#pragma once

#include <memory>

#include "native/targetProcess.h"

struct TargetProcessAccess {
    TargetProcess& object;

    // Replaces the chosen variant.
    void SetVariant(std::unique_ptr<Native> variant) { object.SwapAccess(variant); }

    std::shared_ptr<const TheradData> ReadThread32(uint32_t id) { return object.ReadThread32(id); }
    std::shared_ptr<const TheradData> ReadThread64(uint32_t id) { return object.ReadThread64(id); }
};
