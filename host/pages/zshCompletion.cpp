#include "pages/completions.h"
#include "pages/words.h"

namespace mordhost {

namespace {

// In single quotes, with the characters escaped that _arguments and _describe interpret.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\'') {
            escaped += "'\\''";
            continue;
        }
        escaped += c == ':' || c == '[' || c == ']' || c == '\\' ? "\\" : "";
        escaped += c;
    }
    return escaped;
}

// ":FILE:_files": the value of an option.
std::string ValueSpecification(const OptionEntry& option) {
    const std::string name = ':' + std::string(option.value) + ':';
    switch (option.kind) {
    case ValueKind::none:
        return {};
    case ValueKind::file:
        return name + "_files";
    case ValueKind::directory:
        return name + "_files -/";
    case ValueKind::choice:
        return name + '(' + ChoiceWords(option) + ')';
    case ValueKind::number:
    case ValueKind::text:
        break;
    }
    return name;
}

std::string SpecificationOf(const OptionEntry& option) {
    const std::string excluded = option.excludes.empty() ? "" : '(' + std::string(option.excludes) + ')';
    return "                '" + excluded + (option.repeats ? "*" : "") + std::string(option.name) + '[' +
           Escaped(option.help) + ']' + ValueSpecification(option) + '\'';
}

std::string CaseOf(const CommandEntry& command) {
    std::string text = "        " + std::string(command.name) + ")\n            _arguments";
    for (const OptionEntry& option : command.options) {
        text += " \\\n" + SpecificationOf(option);
    }
    for (const OptionEntry& option : CommonOptions()) {
        text += " \\\n" + SpecificationOf(option);
    }
    for (const PositionalEntry& positional : command.positionals) {
        text += std::string(" \\\n                '") + (positional.times == Times::any ? "*" : "") +
                (positional.times == Times::optional ? "::" : ":") + std::string(positional.name) + ":_files'";
    }
    return text + "\n            ;;\n";
}

} // namespace

std::string ZshCompletion() {
    std::string text = "#compdef mordhost\n"
                       "# Completion of mordhost for zsh. Generated from the option table: do not edit.\n\n"
                       "_mordhost() {\n    local -a commands\n    commands=(\n";
    for (const CommandEntry& command : CommandTable()) {
        text += "        '" + std::string(command.name) + ':' + Escaped(command.help) + "'\n";
    }
    text += "    )\n    if (( CURRENT == 2 )); then\n"
            "        _describe command commands\n        compadd -- " +
            OptionWords(CommonOptions()) +
            "\n        return\n    fi\n"
            "    local command=$words[2]\n    shift words\n    (( CURRENT-- ))\n    case $command in\n";
    for (const CommandEntry& command : CommandTable()) {
        text += CaseOf(command);
    }
    return text + "    esac\n}\n\n_mordhost \"$@\"\n";
}

} // namespace mordhost
