// The completions in the shells that they are for.
#include <sstream>

#include <gtest/gtest.h>

#include "kit/system/process.h"
#include "kit/system/temporaryDirectory.h"

using kit::ProcessResult;
using kit::RunProcess;
using kit::TemporaryDirectory;

namespace {

const std::string completions = std::string(MORDHOST_SOURCE_DIRECTORY) + "/host/completions/";

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

class Completion : public testing::Test {
protected:
    Completion() {
        directory.Write("policy.json", "");
        std::filesystem::create_directory(directory.Path() / "folder");
    }

    std::vector<std::string> Run(const std::vector<std::string>& arguments) const {
        const ProcessResult result = RunProcess({"/usr/bin/env", arguments, "", directory.Name("")});
        EXPECT_EQ(result.code, 0) << result.error;
        EXPECT_EQ(result.error, "");
        return LinesOf(result.output);
    }

    // The suggestions of bash for the last of these words.
    std::vector<std::string> Bash(const std::string& words) const {
        return Run({"bash", "--norc", "-c",
                    "source " + completions + "mordhost.bash; COMP_WORDS=(mordhost " + words +
                        "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _mordhost; "
                        "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\""});
    }

    // The suggestions of fish for the end of this line, without their descriptions.
    std::vector<std::string> Fish(const std::string& line) const {
        std::vector<std::string> words =
            Run({"fish", "--no-config", "-c", "source " + completions + "mordhost.fish; complete -C \"" + line + '"'});
        for (std::string& word : words) {
            word = word.substr(0, word.find('\t'));
        }
        return words;
    }

    const TemporaryDirectory directory;
};

using Words = std::vector<std::string>;

} // namespace

TEST_F(Completion, OfBashSuggestsCommandsOptionsValuesAndFiles) {
    EXPECT_EQ(Bash("re"), (Words{"replay", "rehearse", "record"}));
    EXPECT_EQ(Bash("--v"), (Words{"--version"}));
    EXPECT_EQ(Bash("replay --no"), (Words{"--no-duration", "--no-log"}));
    EXPECT_EQ(Bash("record --no"), Words{});
    EXPECT_EQ(Bash("replay --format ''"), (Words{"text", "json", "jsonl"}));
    EXPECT_EQ(Bash("watch policy.json --dots-down b"), (Words{"broken-answer"}));
    EXPECT_EQ(Bash("replay pol"), (Words{"policy.json"}));
    EXPECT_EQ(Bash("replay --log pol"), (Words{"policy.json"}));
    EXPECT_EQ(Bash("replay --libraries ''"), (Words{"folder"}));
    EXPECT_EQ(Bash("record pol"), Words{});
    EXPECT_EQ(Bash("record --seconds ''"), Words{});
}

TEST_F(Completion, OfFishSuggestsCommandsOptionsValuesAndFiles) {
    EXPECT_EQ(Fish("mordhost re"), (Words{"record", "rehearse", "replay"}));
    EXPECT_EQ(Fish("mordhost replay --no"), (Words{"--no-duration", "--no-log"}));
    EXPECT_EQ(Fish("mordhost record --no"), Words{});
    EXPECT_EQ(Fish("mordhost replay --format "), (Words{"json", "jsonl", "text"}));
    EXPECT_EQ(Fish("mordhost replay pol"), (Words{"policy.json"}));
    EXPECT_EQ(Fish("mordhost replay --libraries f"), (Words{"folder/"}));
    EXPECT_EQ(Fish("mordhost record pol"), Words{});
}

// An interactive zsh completes each line at a press of the tabulator.
TEST_F(Completion, OfZshCompletesCommandsOptionsValuesAndFiles) {
    directory.Write("script", R"zsh(
zmodload zsh/zpty
export TERM=dumb
mkfifo lines
zpty shell zsh -f -i
zpty -w shell "fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -D; LISTMAX=1000
show() { print -r -- \"\$BUFFER\" > lines; BUFFER= }; zle -N show; bindkey '^X' show; print ready > lines"
# A read ends without a line if the pipe is opened before the previous writer has closed it.
next() { until read -r line < lines; do :; done }
next
for typed in 'mordhost rep' 'mordhost replay --no-d' 'mordhost replay --dots-down bro' 'mordhost record --se' \
    'mordhost replay pol' 'mordhost replay --libraries fol'; do
    zpty -w -n shell "$typed"$'\t\x18'
    next
    print -r -- "$line"
done
zpty -d shell
)zsh");
    EXPECT_EQ(
        Run({"timeout", "60", "zsh", "-f", "script", completions}),
        (Words{"mordhost replay", "mordhost replay --no-duration", "mordhost replay --dots-down broken-answer",
               "mordhost record --seconds", "mordhost replay policy.json", "mordhost replay --libraries folder/"}));
}
