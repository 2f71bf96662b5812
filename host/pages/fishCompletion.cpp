#include "pages/completions.h"
#include "pages/words.h"

namespace mordhost {

namespace {

std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' || c == '\\' ? "\\" : "";
        quoted += c;
    }
    return quoted + '\'';
}

// The arguments of `complete` for the value of an option.
std::string ValueArguments(const OptionEntry& option) {
    switch (option.kind) {
    case ValueKind::none:
        return {};
    case ValueKind::file:
        return " -r -F";
    case ValueKind::directory:
        return " -x -a '(__fish_complete_directories)'";
    case ValueKind::choice:
        return " -x -a " + Quoted(ChoiceWords(option));
    case ValueKind::number:
    case ValueKind::text:
        break;
    }
    return " -x";
}

std::string LineOf(std::string_view condition, const OptionEntry& option) {
    return "complete -c mordhost" + (condition.empty() ? "" : " -n " + Quoted(condition)) + " -l " +
           std::string(option.name.substr(2)) + ValueArguments(option) + " -d " + Quoted(option.help) + '\n';
}

} // namespace

std::string FishCompletion() {
    std::string text = "# Completion of mordhost for fish. Generated from the option table: do not edit.\n\n"
                       "complete -c mordhost -f\n";
    for (const OptionEntry& option : CommonOptions()) {
        text += LineOf("", option);
    }
    for (const CommandEntry& command : CommandTable()) {
        const std::string name(command.name);
        const std::string condition = "__fish_seen_subcommand_from " + name;
        text += "\ncomplete -c mordhost -n __fish_use_subcommand -a " + name + " -d " + Quoted(command.help) + '\n';
        if (!command.positionals.empty()) {
            text += "complete -c mordhost -n " + Quoted(condition) + " -F\n";
        }
        for (const OptionEntry& option : command.options) {
            text += LineOf(condition, option);
        }
    }
    return text;
}

} // namespace mordhost
