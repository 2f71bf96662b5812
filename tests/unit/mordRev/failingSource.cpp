#include "kit/system/scriptedSystem.h"

void PrepareSystem() {
    kit::ScriptedSystem::Instance().randomFails = true;
}
