// The road to a service behind the module key, which the log start and the machine id share.
#pragma once

#include "frame/interfaces.h"

// The factory of the module behind "module.base", or null when finder, module or export is missing. Brings the
// bindings of CBaseServices up to date first, and so runs within Init alone. Logs nothing.
CreateZelkObjectFunction FindBaseModuleFactory();
