// The library and the fake siblings, loaded from their files, and nothing of them linked.
#pragma once

#include <filesystem>
#include <string>

#include "abi/fakeSibling.h"
#include "abi/slots.h"

namespace edge {

// {7219CBFF-058B-4ACE-B29D-090214DB480C}: the receiver.
constexpr Guid receiverId = {0x7219CBFF, 0x058B, 0x4ACE, {0xB2, 0x9D, 0x09, 0x02, 0x14, 0xDB, 0x48, 0x0C}};
// {6DADA238-8BD1-4DE4-A224-7D27539DA995}: the receiver again, but not at the export.
constexpr Guid secondReceiverId = {0x6DADA238, 0x8BD1, 0x4DE4, {0xA2, 0x24, 0x7D, 0x27, 0x53, 0x9D, 0xA9, 0x95}};

constexpr uint32_t ok = 0;
constexpr uint32_t noInterface = 0x80004002;

// The built library. The first call that needs it loads it; it stays loaded.
std::filesystem::path LibraryPath();
void* LibraryModule();
Factory LibraryFactory();

// The process's receiver.
Receiver* TheReceiver();

// Loads the three fake siblings. With `logging` their configuration leads to a Zelklog.ini that turns the logger on,
// else to a folder without one.
void LoadSiblings(bool logging = false);

// What the converter of the fake siblings was called for.
const ConverterUse& UseOfConverter();

// The journal since the last call.
std::string Journal();

} // namespace edge
