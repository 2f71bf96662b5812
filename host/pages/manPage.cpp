#include "pages/manPage.h"

#include <algorithm>
#include <vector>

#include "arguments/exitCodes.h"
#include "arguments/optionTable.h"

namespace mordhost {

namespace {

// Text in which nothing is a request or an escape of the formatter.
std::string Roff(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        escaped += c == '-' ? "\\-" : c == '\\' ? "\\e" : std::string(1, c);
    }
    return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

// Sentences, each on its own line.
std::string Sentences(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const size_t end = text.find(". ");
        lines += Roff(text.substr(0, end == std::string_view::npos ? end : end + 1)) + '\n';
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
    }
    return lines;
}

std::string Described(std::string_view help, std::string_view more, bool onLinuxOnly = false) {
    return Roff(help) + ".\n" + Sentences(more) + (onLinuxOnly ? "Linux only.\n" : "");
}

std::string OptionParagraph(const OptionEntry& option) {
    const std::string head = option.value.empty() ? ".B " + Roff(option.name)
                                                  : ".BI " + Roff(option.name) + " \" " + Roff(option.value) + '"';
    return ".TP\n" + head + '\n' + Described(option.help, option.more);
}

// "POLICY", "[EVENTS]", "[POLICY ...]"
std::string WithBrackets(const PositionalEntry& positional) {
    const std::string name(positional.name);
    return positional.times == Times::once       ? name
           : positional.times == Times::optional ? '[' + name + ']'
                                                 : '[' + name + " ...]";
}

std::string Synopsis() {
    std::string text;
    for (const CommandEntry& command : CommandTable()) {
        text += ".SY mordhost\n.B " + Roff(command.name) + '\n';
        if (!command.positionals.empty()) {
            text += ".I";
            for (const PositionalEntry& positional : command.positionals) {
                text += ' ' + Roff(WithBrackets(positional));
            }
            text += '\n';
        }
        text += ".RI [ OPTION ...]\n";
    }
    return text + ".YS\n";
}

std::string Commands() {
    std::string text;
    for (const CommandEntry& command : CommandTable()) {
        text += ".TP\n.B " + Roff(command.name) + '\n' + Described(command.help, command.more, command.onLinuxOnly);
        for (const PositionalEntry& positional : command.positionals) {
            text += ".IP\n.IR " + Roff(positional.name) + " :\n" + Roff(positional.help) + ".\n";
        }
    }
    return text;
}

std::string Options() {
    std::string text;
    for (const CommandEntry& command : CommandTable()) {
        text += ".SS Of " + Roff(command.name) + '\n';
        for (const OptionEntry& option : command.options) {
            text += OptionParagraph(option);
        }
    }
    text += ".SS Of all\n";
    for (const OptionEntry& option : CommonOptions()) {
        text += OptionParagraph(option);
    }
    return text;
}

std::string ExitStatus() {
    std::string text;
    for (size_t code = 0; code < exitCodeTexts.size(); ++code) {
        text += ".TP\n.B " + std::to_string(code) + '\n' + Roff(exitCodeTexts[code]) + '\n';
    }
    return text;
}

constexpr size_t widest = 79; // of a line of text, as formatters expect

// The text, with its lines broken at spaces. A line that begins with a period is a request and stays whole; no line
// becomes one.
std::string Wrapped(std::string_view text) {
    std::string wrapped;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        while (line.size() > widest && !line.starts_with('.')) {
            size_t space = line.rfind(' ', widest);
            while (space != std::string_view::npos && (line[space + 1] == '.' || line[space + 1] == '\'')) {
                space = space == 0 ? std::string_view::npos : line.rfind(' ', space - 1);
            }
            if (space == std::string_view::npos) {
                break;
            }
            wrapped += line.substr(0, space);
            wrapped += '\n';
            line.remove_prefix(space + 1);
        }
        wrapped += line;
        wrapped += '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return wrapped;
}

// The generated part that replaces `line`, or the line itself.
std::string Replaced(std::string_view line) {
    if (line == "@SYNOPSIS@") {
        return Synopsis();
    }
    if (line == "@COMMANDS@") {
        return Commands();
    }
    if (line == "@OPTIONS@") {
        return Options();
    }
    return line == "@EXIT STATUS@" ? ExitStatus() : std::string(line) + '\n';
}

} // namespace

std::string ManPage(std::string_view page) {
    std::string text = ".\\\" Generated from host/pages/mordhost.1.in and the option table: do not edit.\n";
    while (!page.empty()) {
        const size_t end = std::min(page.find('\n'), page.size());
        text += Replaced(page.substr(0, end));
        page.remove_prefix(std::min(end + 1, page.size()));
    }
    return Wrapped(text);
}

} // namespace mordhost
