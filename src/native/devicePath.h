// Conversion from device paths to drive letters.
#pragma once

#include <string>

#include "platform/wideChar.h"

// Returns `path` with a drive letter instead of its device name, such as "\Device\HarddiskVolume1" in
// "\Device\HarddiskVolume1\dir\file". Returns an empty path if no drive matches or `path` is empty. Asks the system for
// every letter, from 'A', at each call. Any thread may call; nothing is logged.
//
// The lowest letter whose device name is a prefix of the path wins. Where the name ends is not checked: the drive of
// volume 1 also matches a path on volume 10. ASCII letters match without regard to case. Throws std::out_of_range for a
// path that is a proper prefix of a device name, and std::bad_alloc.
std::basic_string<WideChar> DevicePathToDosPath(const std::basic_string<WideChar>& path);
