#include "app/mordhost.h"

#include <algorithm>
#include <iostream>

#include "app/commands.h"
#include "app/exitCode.h"
#include "document/filePath.h"
#include "document/sourceText.h"
#include "library/libraries.h"

namespace mordhost {

namespace {

int Fail(const std::exception& error, int code) {
    std::cout.flush(); // what was decided before stands before the message
    std::cerr << "mordhost: " << error.what() << '\n';
    return code;
}

// Reads the arguments. Returns the exit code when there is nothing more to do, as after --help.
int Parse(std::vector<std::string> arguments, Action& action) {
    CLI::App app("The reference host of mordRev: decides connection events as an agent does, and shows why.",
                 "mordhost");
    app.set_version_flag("--version", std::string("mordhost ") + MORDHOST_VERSION);
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a path may begin with a slash
    AddCommands(app, action);
    std::reverse(arguments.begin(), arguments.end()); // CLI11 takes them off the back
    try {
        app.parse(std::move(arguments));
        return EXIT_DONE;
    } catch (const CLI::ParseError& error) {
        const int code = app.exit(error, std::cout, std::cerr);
        return code == static_cast<int>(CLI::ExitCodes::Success) ? EXIT_DONE : EXIT_BAD_ARGUMENTS;
    }
}

} // namespace

int RunMordhost(std::vector<std::string> arguments) {
    Action action;
    const int code = Parse(std::move(arguments), action);
    if (!action) {
        return code;
    }
    try {
        action();
        return EXIT_DONE;
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
