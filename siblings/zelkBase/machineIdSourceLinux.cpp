#include "zelkBase/machineIdFile.h"
#include "zelkBase/machineIdSource.h"

namespace siblings {

WideString ReadMachineId() {
    for (const char* const path : {"/etc/machine-id", "/var/lib/dbus/machine-id"}) {
        const std::string id = ReadMachineIdFile(path);
        if (!id.empty()) {
            return ToWide(id);
        }
    }
    return {};
}

} // namespace siblings
