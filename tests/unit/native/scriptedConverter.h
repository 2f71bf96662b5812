// The text converter of the base library, for tests that link text conversion over the scripted system.
#pragma once

#include "frame/interfaces.h"

// What the scripted ZelkBase.dll exports as CreateZelkObject: it hands out the converter and nothing else.
extern "C" uint32_t CreateScriptedConverter(const GUID* iid, void** out);

// Whether the converter writes a text; else it leaves the destination as it is.
extern bool scriptedConverterWrites;
