// The id that the system gave this machine.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// The text of the id; empty when the machine has none. On Windows the value "MachineGuid" that the installation wrote
// to the registry, on Linux the id of /etc/machine-id or, failing that, of /var/lib/dbus/machine-id.
WideString ReadMachineId();

} // namespace siblings
