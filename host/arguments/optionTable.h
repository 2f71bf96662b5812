// All commands and options of mordhost. The parser, the help text, the man page and the completions of the shells come
// from this table.
//
// To add an option: an entry in optionTable.cpp, and its variable in the command's Declare.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "policy/modeNames.h"

namespace mordhost {

enum class ValueKind {
    none,      // a flag
    file,      // the name of a file
    directory, // the name of a directory
    number,    // an integer from `least` to `greatest`
    choice,    // one of `choices`
    text,      // any other text
};

struct OptionEntry {
    std::string_view name; // "--format"
    ValueKind kind = ValueKind::none;
    std::string_view value; // its name in texts: "FILE"; empty for a flag
    std::string_view help;  // one sentence without a period
    std::string_view more;  // further sentences for the man page; may be empty
    const std::initializer_list<NamedValue>* choices = nullptr;
    unsigned least = 0;
    unsigned greatest = 0;
    bool repeats = false;
    std::string_view excludes; // the name of an option of the same command; may be empty
};

// How often an argument may occur.
enum class Times {
    once,
    optional, // once or not at all
    any,      // any number of times, also none
};

// An argument without a name on the command line.
struct PositionalEntry {
    std::string_view name; // "POLICY"
    ValueKind kind = ValueKind::file;
    std::string_view help; // as above
    Times times = Times::once;
};

struct CommandEntry {
    std::string_view name;
    std::string_view help; // as above
    std::string_view more; // as above
    std::vector<PositionalEntry> positionals;
    std::vector<OptionEntry> options;
    bool onLinuxOnly = false;
};

// The options that every command and mordhost itself have, handled by the parser.
const std::vector<OptionEntry>& CommonOptions();

// All commands of all platforms, in the order of the texts.
const std::vector<CommandEntry>& CommandTable();

// The entry of the command `name`, or null.
const CommandEntry* FindCommand(std::string_view name);

// The option `name` of the command, or null.
const OptionEntry* FindOption(const CommandEntry& command, std::string_view name);

} // namespace mordhost
