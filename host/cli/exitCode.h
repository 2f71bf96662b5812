// The exit codes of all commands of mordhost.
#pragma once

namespace mordhost {

// A command never exits with EXIT_DONE if something that was requested was not done.
enum ExitCode : int {
    EXIT_DONE = 0,
    EXIT_NO = 1,               // the answer is no: something changed, or a check found a fault
    EXIT_BAD_ARGUMENTS = 2,    // also: a file of the command line cannot be opened or conflicts with another file
    EXIT_DOCUMENT_REFUSED = 3, // the message has file, line and column
    EXIT_NOT_LOADABLE = 4,     // the library or a sibling cannot be loaded or started
    EXIT_FAILED = 5,           // interrupted, output was lost, a program did not start, or the system refused a request
};

} // namespace mordhost
