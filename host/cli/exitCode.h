// The exit codes of mordhost.
#pragma once

namespace mordhost {

enum ExitCode : int {
    EXIT_DONE = 0,
    EXIT_FAILED = 1,           // interrupted, output was lost, or the system refused a request
    EXIT_BAD_ARGUMENTS = 2,    // also: a file of the command line cannot be opened or conflicts with another file
    EXIT_DOCUMENT_REFUSED = 3, // the message has file, line and column
    EXIT_NOT_LOADABLE = 4,     // the library or a sibling cannot be loaded or started
};

} // namespace mordhost
