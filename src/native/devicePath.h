// Device paths and drive letters.
#pragma once

#include <string>

#include "platform/wideChar.h"

// The path with a drive letter for one in device form, such as "\Device\HarddiskVolume1\dir\file"; empty when no letter
// fits. The lowest letter whose device name begins the path wins, without a look at where the name ends: volume 1 also
// takes a path on volume 10. Throws std::out_of_range for a path that is shorter than a device name and equal as far as
// it goes.
std::basic_string<WideChar> DevicePathToDosPath(const std::basic_string<WideChar>& path);
