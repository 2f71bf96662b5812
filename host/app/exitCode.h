// What the process tells by its exit code.
#pragma once

namespace mordhost {

enum ExitCode : int {
    EXIT_DONE = 0,
    EXIT_FAILED = 1,           // interrupted, output was lost, or the system refuses something
    EXIT_BAD_ARGUMENTS = 2,    // also: a file that the command line names cannot be opened, or is in another one's way
    EXIT_DOCUMENT_REFUSED = 3, // the message names file, line and column
    EXIT_NOT_LOADABLE = 4,     // the library or a sibling of it
};

} // namespace mordhost
