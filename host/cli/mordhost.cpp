#include "cli/mordhost.h"

#include <iostream>

#include "cli/commandLine.h"
#include "cli/commandList.h"
#include "cli/exitCode.h"
#include "cli/hostVersion.h"
#include "compare/sideMessages.h"
#include "compare/sideServer.h"
#include "decide/libraries.h"
#include "document/sourceText.h"
#include "output/requireWritten.h"
#include "system/fileError.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

int Fail(const std::exception& error, int code) {
    std::cout.flush(); // the decisions come before the message
    std::cerr << "mordhost: " << error.what() << '\n';
    return code;
}

} // namespace

int RunMordhost(std::vector<std::string> arguments) {
    try {
        HoldStopRequests();
        if (arguments == std::vector<std::string>{secondProcessArgument}) {
            ServeSide(std::cin, std::cout, std::string(hostVersion));
            return EXIT_DONE;
        }
        const Commands commands = AllCommands();
        int code = EXIT_DONE;
        if (Command* const command = ReadCommandLine(commands, std::move(arguments), code)) {
            command->Run();
            code = command->Code();
        }
        std::cout.flush(); // the help text may not be written yet
        RequireWritten(std::cout, standardOutputName);
        return code;
    } catch (const DocumentError& error) {
        return Fail(error, EXIT_DOCUMENT_REFUSED);
    } catch (const LoadError& error) {
        return Fail(error, EXIT_NOT_LOADABLE);
    } catch (const FileError& error) {
        return Fail(error, EXIT_BAD_ARGUMENTS);
    } catch (const std::exception& error) { // RunError, and unexpected errors
        return Fail(error, EXIT_FAILED);
    }
}

} // namespace mordhost
