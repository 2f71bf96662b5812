// The standard streams of the program.
#pragma once

namespace mordinspect {

// Sets standard output and standard error to binary mode, so that line ends stay as written, and the console to UTF-8.
// Call it before anything is written.
void PrepareStreams();

} // namespace mordinspect
