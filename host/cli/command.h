// A command of mordhost: its arguments and what it does.
//
// To add one: a file xCommand.cpp with a class and MakeXCommand, and a line in commandList.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mordhost {

// Declares the arguments of a command. Each value is stored in the variable that is passed with it, which must outlive
// the parsing. An option that is not given leaves its variable unchanged.
class Arguments {
public:
    explicit Arguments(CLI::App& command) : m_command(command) {}

    // A required positional argument.
    void Positional(const std::string& name, std::string& value, const std::string& help);

    // A positional argument that may be absent.
    void OptionalPositional(const std::string& name, std::string& value, const std::string& help);

    // An option without a value.
    void Flag(const std::string& name, bool& value, const std::string& help);

    // An option with a text value. `kind` is its name in the help text: "FILE".
    void Text(const std::string& name, const std::string& kind, std::string& value, const std::string& help);

    // An option with an integer value from `least` to `greatest`.
    void Number(const std::string& name, const std::string& kind, std::optional<unsigned>& value, unsigned least,
                unsigned greatest, const std::string& help);

    // An option that may be repeated. `take` receives each value and returns why it is invalid, or an empty text.
    void Repeated(const std::string& name, const std::string& kind,
                  std::function<std::string(const std::string& value)> take, const std::string& help);

    // Refuses a command line that has both options, which are declared already.
    void Exclude(const std::string& one, const std::string& other);

private:
    CLI::App& m_command;
};

class Command {
public:
    virtual ~Command() = default;

    virtual std::string Name() const = 0;
    virtual std::string Help() const = 0; // one sentence without a period
    virtual void Declare(Arguments& arguments) = 0;

    // The exit code after Run has returned.
    virtual int Code() const { return 0; }

    // Executes the command after its arguments were parsed. Throws DocumentError, LoadError, FileError and RunError.
    virtual void Run() = 0;
};

using Commands = std::vector<std::unique_ptr<Command>>;

} // namespace mordhost
