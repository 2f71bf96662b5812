#include "native/targetProcess.h"

#include "native/chooseNative.h"

TargetProcess::TargetProcess(platform::Handle process, uint32_t)
    : processHandle(process), processId(platform::GetProcessId(process)), native(ChooseNative(process)) {}
