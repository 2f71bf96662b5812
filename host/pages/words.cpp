#include "pages/words.h"

namespace mordhost {

namespace {

void AddWord(std::string& words, std::string_view word) {
    words += words.empty() ? "" : " ";
    words += word;
}

} // namespace

std::string ChoiceWords(const OptionEntry& option) {
    std::string words;
    for (const NamedValue& choice : *option.choices) {
        AddWord(words, choice.name);
    }
    return words;
}

std::string OptionWords(const std::vector<OptionEntry>& options) {
    std::string words;
    for (const OptionEntry& option : options) {
        AddWord(words, option.name);
    }
    return words;
}

std::string CommandWords() {
    std::string words;
    for (const CommandEntry& command : CommandTable()) {
        AddWord(words, command.name);
    }
    return words;
}

} // namespace mordhost
