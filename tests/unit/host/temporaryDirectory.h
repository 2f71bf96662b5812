// A temporary directory, and the paths of its files as mordhost makes them.
#pragma once

#include "document/filePath.h"
#include "kit/system/temporaryDirectory.h"
