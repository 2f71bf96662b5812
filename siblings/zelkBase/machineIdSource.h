// The id that the system assigned to this machine.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// Returns the id, or an empty text if the machine has none. On Windows it is the registry value "MachineGuid", which
// the installation wrote; on Linux the id in /etc/machine-id or, failing that, in /var/lib/dbus/machine-id. Any thread
// may call. Throws std::bad_alloc.
WideString ReadMachineId();

} // namespace siblings
