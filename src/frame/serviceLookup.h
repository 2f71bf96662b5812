// The way to a service of the module with the key "module.base". The log start and the machine id share it.
#pragma once

#include "frame/interfaces.h"

// Returns the factory of that module, or null if the finder, the module or the export is missing. Calls
// CBaseServices::Bind first and therefore may run within Init only. Logs nothing. The caller owns the references that
// it creates with the factory.
CreateZelkObjectFunction FindBaseModuleFactory();
