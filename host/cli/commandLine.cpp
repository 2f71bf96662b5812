// The only file that includes CLI11, which is slow to compile.
#include "cli/commandLine.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include <CLI/CLI.hpp>

#include "cli/exitCode.h"

namespace mordhost {

void Arguments::Positional(const std::string& name, std::string& value, const std::string& help) {
    m_command.add_option(name, value, help)->required();
}

void Arguments::OptionalPositional(const std::string& name, std::string& value, const std::string& help) {
    m_command.add_option(name, value, help);
}

void Arguments::Flag(const std::string& name, bool& value, const std::string& help) {
    m_command.add_flag(name, value, help);
}

void Arguments::Text(const std::string& name, const std::string& kind, std::string& value, const std::string& help) {
    m_command.add_option(name, value, help)->type_name(kind);
}

void Arguments::Number(const std::string& name, const std::string& kind, std::optional<unsigned>& value, unsigned least,
                       unsigned greatest, const std::string& help) {
    m_command.add_option(name, value, help)->type_name(kind)->check(CLI::Range(least, greatest));
}

void Arguments::Repeated(const std::string& name, const std::string& kind,
                         std::function<std::string(const std::string& value)> take, const std::string& help) {
    const auto takeAll = [name, take = std::move(take)](const std::vector<std::string>& values) {
        for (const std::string& value : values) {
            const std::string fault = take(value);
            if (!fault.empty()) {
                throw CLI::ValidationError(name, fault);
            }
        }
    };
    m_command.add_option_function<std::vector<std::string>>(name, takeAll, help)
        ->type_name(kind)
        ->allow_extra_args(false);
}

void Arguments::Exclude(const std::string& one, const std::string& other) {
    m_command.get_option(one)->excludes(m_command.get_option(other));
}

Command* ReadCommandLine(const Commands& commands, std::vector<std::string> arguments, int& code) {
    CLI::App app("The reference host of mordRev: decides connection events as an agent does, and shows the reasons.",
                 "mordhost");
    app.set_version_flag("--version", std::string("mordhost ") + MORDHOST_VERSION);
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a path may begin with a slash
    Command* selected = nullptr;
    for (const std::unique_ptr<Command>& command : commands) {
        CLI::App& parser = *app.add_subcommand(command->Name(), command->Help());
        Arguments declared(parser);
        command->Declare(declared);
        parser.callback([&selected, &command] { selected = command.get(); });
    }
    std::reverse(arguments.begin(), arguments.end()); // CLI11 takes them from the back
    try {
        app.parse(std::move(arguments));
        code = EXIT_DONE;
    } catch (const CLI::ParseError& error) {
        const int refusal = app.exit(error, std::cout, std::cerr);
        code = refusal == static_cast<int>(CLI::ExitCodes::Success) ? EXIT_DONE : EXIT_BAD_ARGUMENTS;
        return nullptr;
    }
    return selected;
}

} // namespace mordhost
