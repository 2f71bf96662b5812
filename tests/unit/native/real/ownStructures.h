// The structures of this process that others inspect, and what can be done to them.
#pragma once

#include <cstdint>
#include <string>

#include "kit/system/published/processLayouts.h"

using OwnPebType = published::Peb<uintptr_t>;
using OwnParametersType = published::RtlUserProcessParameters<uintptr_t>;
using OwnEntryType = published::LdrDataTableEntry<uintptr_t>;

OwnPebType& OwnPeb();
OwnParametersType& OwnParameters();

// The first of the loader list in load order: the program itself.
OwnEntryType& FirstModule();

// Sets the image path, with room for its NUL, in memory that can be read much further, all zero.
bool SetImagePath(const std::wstring& path);

// The same in memory that can be read as far as MaximumLength and no further.
bool SetImagePathBeforeUnreadable(const std::wstring& path);

// An image path of `length` characters 'x', with more of them behind it as far as anyone reads.
bool SetImagePathWithoutNul(size_t length);

// Puts an entry behind the first module of which only the first field can be read. Its address, or 0.
uintptr_t AddEntryBeforeUnreadable();

// Gives the first module a full name of `size` bytes, all 'p'.
bool SetFirstModuleName(size_t size);
