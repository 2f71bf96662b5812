// The version of a loaded library. One body per platform.
#pragma once

#include <string>

namespace mordhost {

// The version in the version resource (Windows) or in the note "mordRev" (elsewhere) of a library that LoadLibraryFile
// has loaded: "1.0.0". Empty if it has none.
std::string VersionOfLibrary(void* library);

} // namespace mordhost
