// A command of mordhost: its arguments and what it does.
//
// To add one: a file xCommand.cpp with a class and MakeXCommand, a line in commandList, and an entry in the option
// table.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "arguments/optionTable.h"

namespace CLI {
class App;
}

namespace mordhost {

// Binds the arguments of a command, which the option table declares, to variables. Each value is stored in the variable
// that is passed with its name, which must outlive the parsing. An option that is not given leaves its variable
// unchanged. All functions throw std::logic_error for a name that the command does not have in the table.
class Arguments {
public:
    Arguments(CLI::App& command, const CommandEntry& entry) : m_command(command), m_entry(entry) {}

    void Positional(std::string_view name, std::string& value);

    // One that may be absent.
    void Positional(std::string_view name, std::optional<std::string>& value);

    // One that may be absent or repeated.
    void Positionals(std::string_view name, std::vector<std::string>& values);

    // An option without a value.
    void Flag(std::string_view name, bool& value);

    // A file, a directory or another text.
    void Text(std::string_view name, std::string& value);

    void Number(std::string_view name, std::optional<unsigned>& value);

    // An enumeration, or an optional one, whose values are those of the choices.
    template <typename Chosen>
    void Choice(std::string_view name, Chosen& value) {
        TakeChoice(name, [&value](uint32_t chosen) { Store(chosen, value); });
    }

    // An option that may be repeated. `take` receives each value and returns why it is invalid, or an empty text.
    void Repeated(std::string_view name, std::function<std::string(const std::string& value)> take);

    // Call it after all others. Applies the exclusions of the table. Throws std::logic_error if an argument of the
    // table has no variable.
    void Complete() const;

private:
    template <typename Chosen>
    static void Store(uint32_t chosen, Chosen& value) {
        value = static_cast<Chosen>(chosen);
    }
    template <typename Chosen>
    static void Store(uint32_t chosen, std::optional<Chosen>& value) {
        value = static_cast<Chosen>(chosen);
    }

    void TakeChoice(std::string_view name, std::function<void(uint32_t)> take);
    const OptionEntry& Bind(std::string_view name);
    const PositionalEntry& BindPositional(std::string_view name);

    CLI::App& m_command;
    const CommandEntry& m_entry;
    std::set<std::string_view> m_bound;
};

class Command {
public:
    virtual ~Command() = default;

    // The name of its entry in the option table.
    virtual std::string_view Name() const = 0;
    virtual void Declare(Arguments& arguments) = 0;

    // The exit code after Run has returned.
    virtual int Code() const { return 0; }

    // Executes the command after its arguments were parsed. Throws DocumentError, LoadError, FileError and RunError.
    virtual void Run() = 0;
};

using Commands = std::vector<std::unique_ptr<Command>>;

} // namespace mordhost
