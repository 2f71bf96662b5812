#include "hostKit/scriptedSystem.h"

void PrepareSystem() {
    hostKit::ScriptedSystem::Instance().randomFails = true;
}
