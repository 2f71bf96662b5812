#include "pages/completions.h"
#include "pages/words.h"

namespace mordhost {

namespace {

// The command that completes the value of an option.
std::string ValueWords(const OptionEntry& option) {
    switch (option.kind) {
    case ValueKind::none:
        break;
    case ValueKind::file:
        return "_mordhost_names -f";
    case ValueKind::directory:
        return "_mordhost_names -d";
    case ValueKind::choice:
        return "_mordhost_words \"" + ChoiceWords(option) + '"';
    case ValueKind::number:
    case ValueKind::text:
        return ":"; // any text: nothing to suggest
    }
    return {};
}

std::string CaseOf(const CommandEntry& command) {
    std::string text = "        " + std::string(command.name) + ")\n            case \"$previous\" in\n";
    for (const OptionEntry& option : command.options) {
        if (option.kind != ValueKind::none) {
            text += "                " + std::string(option.name) + ") " + ValueWords(option) + "; return ;;\n";
        }
    }
    text += "            esac\n            options=\"" + OptionWords(command.options) + ' ' +
            OptionWords(CommonOptions()) + "\"\n";
    text += std::string("            files=") + (command.positionals.empty() ? "no" : "yes") + "\n            ;;\n";
    return text;
}

constexpr auto head = R"sh(# Completion of mordhost for bash. Generated from the option table: do not edit.

_mordhost_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_mordhost_names() {
    compopt -o filenames 2> /dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "$current")
}

_mordhost() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local options files=no
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        _mordhost_words ")sh";

constexpr auto tail = R"sh(        *) return ;;
    esac
    if [[ $current == -* ]]; then
        _mordhost_words "$options"
    elif [ "$files" = yes ]; then
        _mordhost_names -f
    fi
}

complete -F _mordhost mordhost
)sh";

} // namespace

std::string BashCompletion() {
    std::string text = head + CommandWords() + ' ' + OptionWords(CommonOptions()) +
                       "\"\n        return\n    fi\n    case \"$command\" in\n";
    for (const CommandEntry& command : CommandTable()) {
        text += CaseOf(command);
    }
    return text + tail;
}

} // namespace mordhost
