// The only file that includes CLI11, which is slow to compile.
#include "cli/commandLine.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <utility>

#include <CLI/CLI.hpp>

#include "arguments/nearestName.h"
#include "cli/exitCode.h"
#include "cli/hostVersion.h"

namespace mordhost {

namespace {

std::string StringOf(std::string_view text) {
    return std::string(text);
}

CLI::Option* WithKind(CLI::Option* option, const OptionEntry& entry) {
    if (!entry.value.empty()) {
        option->type_name(StringOf(entry.value));
    }
    return option;
}

// Prints a mistake in a name and the nearest known name.
void Suggest(const std::string& mistake, std::string_view typed, const std::vector<std::string_view>& names) {
    const std::string_view nearest = NearestName(typed, names);
    std::cerr << "mordhost: " << mistake << (nearest.empty() ? "" : "; did you mean " + StringOf(nearest) + "?")
              << "\nRun with --help for more information.\n";
}

bool IsOption(std::string_view argument) {
    return argument.size() > 1 && argument.front() == '-';
}

std::vector<std::string_view> NamesOf(const std::vector<OptionEntry>& options) {
    std::vector<std::string_view> names;
    for (const OptionEntry& option : options) {
        names.push_back(option.name);
    }
    return names;
}

// Reports the first name of a command or option that does not exist. Returns whether there is one. An argument after an
// option may be the option's value, whatever it looks like, and is skipped.
bool ReportsUnknownName(const Commands& commands, const std::vector<std::string>& arguments) {
    std::vector<std::string_view> names = NamesOf(CommonOptions());
    const CommandEntry* entry = nullptr;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        const std::string_view name = argument.substr(0, argument.find('='));
        if (!IsOption(argument)) {
            if (entry != nullptr) {
                continue;
            }
            std::vector<std::string_view> commandNames;
            for (const auto& command : commands) {
                commandNames.push_back(command->Name());
            }
            if (std::find(commandNames.begin(), commandNames.end(), argument) == commandNames.end()) {
                Suggest("there is no command " + StringOf(argument), argument, commandNames);
                return true;
            }
            entry = FindCommand(argument);
            const auto options = NamesOf(entry->options);
            names.insert(names.end(), options.begin(), options.end());
        } else if (argument == "--") {
            return false; // only positional arguments follow
        } else if (argument.starts_with("--") && std::find(names.begin(), names.end(), name) == names.end()) {
            Suggest("there is no option " + StringOf(name) + (entry == nullptr ? "" : " of " + StringOf(entry->name)),
                    name, names);
            return true;
        } else if (const OptionEntry* const option = entry == nullptr ? nullptr : FindOption(*entry, argument)) {
            i += option->kind == ValueKind::none ? 0 : 1;
        }
    }
    return false;
}

} // namespace

const OptionEntry& Arguments::Bind(std::string_view name) {
    const OptionEntry* const option = FindOption(m_entry, name);
    if (option == nullptr) {
        throw std::logic_error("the option table of " + StringOf(m_entry.name) + " has no " + StringOf(name));
    }
    m_bound.insert(option->name);
    return *option;
}

const PositionalEntry& Arguments::BindPositional(std::string_view name) {
    const auto entry = std::find_if(m_entry.positionals.begin(), m_entry.positionals.end(),
                                    [name](const PositionalEntry& positional) { return positional.name == name; });
    if (entry == m_entry.positionals.end()) {
        throw std::logic_error("the option table of " + StringOf(m_entry.name) + " has no " + StringOf(name));
    }
    m_bound.insert(entry->name);
    return *entry;
}

void Arguments::Positional(std::string_view name, std::string& value) {
    const PositionalEntry& entry = BindPositional(name);
    m_command.add_option(StringOf(entry.name), value, StringOf(entry.help))->required();
}

void Arguments::Positional(std::string_view name, std::optional<std::string>& value) {
    const PositionalEntry& entry = BindPositional(name);
    m_command.add_option(StringOf(entry.name), value, StringOf(entry.help));
}

void Arguments::Positionals(std::string_view name, std::vector<std::string>& values) {
    const PositionalEntry& entry = BindPositional(name);
    m_command.add_option(StringOf(entry.name), values, StringOf(entry.help));
}

void Arguments::Flag(std::string_view name, bool& value) {
    const OptionEntry& entry = Bind(name);
    m_command.add_flag(StringOf(entry.name), value, StringOf(entry.help));
}

void Arguments::Text(std::string_view name, std::string& value) {
    const OptionEntry& entry = Bind(name);
    WithKind(m_command.add_option(StringOf(entry.name), value, StringOf(entry.help)), entry);
}

void Arguments::Number(std::string_view name, std::optional<unsigned>& value) {
    const OptionEntry& entry = Bind(name);
    WithKind(m_command.add_option(StringOf(entry.name), value, StringOf(entry.help)), entry)
        ->check(CLI::Range(entry.least, entry.greatest));
}

void Arguments::TakeChoice(std::string_view name, std::function<void(uint32_t)> take) {
    const OptionEntry& entry = Bind(name);
    const auto takeName = [&entry, take = std::move(take)](const std::string& value) {
        const std::optional<uint32_t> chosen = ValueOf(value, *entry.choices);
        if (!chosen) {
            throw CLI::ValidationError(StringOf(entry.name),
                                       '"' + value + "\" is not one of " + ListNames(*entry.choices));
        }
        take(*chosen);
    };
    WithKind(m_command.add_option_function<std::string>(StringOf(entry.name), takeName, StringOf(entry.help)), entry);
}

void Arguments::Repeated(std::string_view name, std::function<std::string(const std::string& value)> take) {
    const OptionEntry& entry = Bind(name);
    const auto takeAll = [&entry, take = std::move(take)](const std::vector<std::string>& values) {
        for (const std::string& value : values) {
            const std::string fault = take(value);
            if (!fault.empty()) {
                throw CLI::ValidationError(StringOf(entry.name), fault);
            }
        }
    };
    WithKind(
        m_command.add_option_function<std::vector<std::string>>(StringOf(entry.name), takeAll, StringOf(entry.help)),
        entry)
        ->allow_extra_args(false);
}

void Arguments::Complete() const {
    const auto require = [this](std::string_view name) {
        if (!m_bound.contains(name)) {
            throw std::logic_error("the command " + StringOf(m_entry.name) + " has no variable for " + StringOf(name));
        }
    };
    for (const PositionalEntry& positional : m_entry.positionals) {
        require(positional.name);
    }
    for (const OptionEntry& option : m_entry.options) {
        require(option.name);
    }
    for (const OptionEntry& option : m_entry.options) {
        if (!option.excludes.empty()) {
            m_command.get_option(StringOf(option.name))->excludes(m_command.get_option(StringOf(option.excludes)));
        }
    }
}

Command* ReadCommandLine(const Commands& commands, std::vector<std::string> arguments, int& code) {
    CLI::App app("The reference host of mordRev: decides connection events as an agent does, and shows the reasons.",
                 "mordhost");
    app.set_version_flag("--version", StringOf("mordhost ") + StringOf(hostVersion));
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // a path may begin with a slash
    Command* selected = nullptr;
    for (const std::unique_ptr<Command>& command : commands) {
        const CommandEntry* const entry = FindCommand(command->Name());
        if (entry == nullptr) {
            throw std::logic_error("the option table has no command " + StringOf(command->Name()));
        }
        CLI::App& parser = *app.add_subcommand(StringOf(entry->name), StringOf(entry->help));
        Arguments declared(parser, *entry);
        command->Declare(declared);
        declared.Complete();
        parser.callback([&selected, &command] { selected = command.get(); });
    }
    if (ReportsUnknownName(commands, arguments)) {
        code = EXIT_BAD_ARGUMENTS;
        return nullptr;
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
