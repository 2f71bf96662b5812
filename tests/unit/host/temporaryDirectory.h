// A temporary directory, and the paths of its files as mordhost makes them.
#pragma once

#include "kit/system/temporaryDirectory.h"
#include "system/filePath.h"
