#include "app/mordhost.h"

#include <iostream>

#include "app/commandLine.h"
#include "app/exitCode.h"
#include "document/filePath.h"
#include "document/sourceText.h"
#include "library/libraries.h"
#include "output/requireWritten.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

int Fail(const std::exception& error, int code) {
    std::cout.flush(); // what was decided before stands before the message
    std::cerr << "mordhost: " << error.what() << '\n';
    return code;
}

} // namespace

int RunMordhost(std::vector<std::string> arguments) {
    try {
        HoldStopRequests();
        int code = EXIT_DONE;
        const Action action = ReadCommandLine(std::move(arguments), code);
        if (action) {
            action();
        }
        std::cout.flush(); // of a help text, for one
        RequireWritten(std::cout, standardOutputName);
        return code;
    } catch (const DocumentError& error) {
        return Fail(error, EXIT_DOCUMENT_REFUSED);
    } catch (const LoadError& error) {
        return Fail(error, EXIT_NOT_LOADABLE);
    } catch (const FileError& error) {
        return Fail(error, EXIT_BAD_ARGUMENTS);
    } catch (const std::exception& error) { // RunError, and what nobody foresaw
        return Fail(error, EXIT_FAILED);
    }
}

} // namespace mordhost
