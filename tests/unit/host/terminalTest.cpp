// Output on a terminal, by means of a pseudo-terminal. Posix only.
#include <csignal>

#include <fcntl.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "unit/host/mordhostFixture.h"

using mordhostTest::MordhostTest;
using mordhostTest::ScopedVariable;

namespace {

class Terminal : public MordhostTest {
protected:
    // The output on the terminal of a replay of `events` events. If `outputFile` is given, it receives the standard
    // output.
    std::string Shown(size_t events, const std::string& outputFile = "") const {
        std::string lines;
        for (size_t i = 0; i < events; ++i) {
            lines += "{}\n";
        }
        std::vector<std::string> words = {MORDHOST_PROGRAM, "replay",
                                          directory.Write("p.json", R"({"rules": [{"guid": "G", "type": "t"}]})"),
                                          directory.Write("e.jsonl", lines)};
        std::vector<char*> pointers;
        for (std::string& word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);

        int master = -1;
        const pid_t test = getpid();
        const pid_t process = forkpty(&master, nullptr, nullptr, nullptr);
        if (process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL); // the child ends with the test, also when that is killed
            if (getppid() != test) {
                _exit(127);
            }
            if (!outputFile.empty()) {
                dup2(open(outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
            }
            alarm(60);
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        std::string shown;
        char block[4096];
        ssize_t size = 0;
        while ((size = read(master, block, sizeof block)) > 0) {
            shown.append(block, static_cast<size_t>(size));
        }
        close(master);
        waitpid(process, nullptr, 0);
        return shown;
    }

    const ScopedVariable kind{"TERM", "xterm"};
    const ScopedVariable noColor{"NO_COLOR", ""};
};

// The lines of a terminal that received `text`. Colours are ignored.
std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    size_t column = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            lines.emplace_back();
            column = 0;
        } else if (text[i] == '\r') {
            column = 0;
        } else if (text[i] == '\x1b') {
            i = text.find_first_of("mK", i);
            if (text[i] == 'K') {
                lines.back().resize(column);
            }
        } else {
            lines.back().resize(std::max(lines.back().size(), column + 1), ' ');
            lines.back()[column++] = text[i];
        }
    }
    return lines;
}

} // namespace

TEST_F(Terminal, VerdictsAreColoured) {
    EXPECT_NE(Shown(1).find("\x1b[31mblock\x1b[0m"), std::string::npos);
}

TEST_F(Terminal, NoColorIsRespected) {
    EXPECT_NE(Shown(1).find('\x1b'), std::string::npos);
    const ScopedVariable wish("NO_COLOR", "1");
    EXPECT_EQ(Shown(1).find('\x1b'), std::string::npos);
}

TEST_F(Terminal, ATerminalWithoutColoursReceivesNone) {
    const ScopedVariable poor("TERM", "dumb");
    EXPECT_EQ(Shown(1).find('\x1b'), std::string::npos);
}

TEST_F(Terminal, ALongRunShowsItsProgressIfItsRowsGoToAFile) {
    const std::string shown = Shown(500000, directory.Name("out"));
    EXPECT_NE(shown.find("% "), std::string::npos) << shown;
    EXPECT_NE(shown.find(" events"), std::string::npos) << shown;
    EXPECT_EQ(shown.substr(shown.size() - 4), "\r\x1b[K") << "and takes it away at the end";
    EXPECT_EQ(directory.Read("out").find('\x1b'), std::string::npos);
}

TEST_F(Terminal, AShortRunShowsNoProgress) {
    EXPECT_EQ(Shown(1, directory.Name("out")), "");
}

TEST_F(Terminal, RowsAndProgressShareATerminal) {
    constexpr size_t events = 150000;
    const std::string shown = Shown(events);
    EXPECT_NE(shown.find("% "), std::string::npos) << "the bar is drawn";
    size_t rows = 0;
    const std::vector<std::string> lines = LinesOf(shown);
    for (const std::string& line : lines) {
        rows += line.starts_with("-  ") && line.ends_with("no dot is held") ? 1 : 0;
        ASSERT_EQ(line.find("[#"), std::string::npos) << line;
        ASSERT_EQ(line.find("[."), std::string::npos) << line;
    }
    EXPECT_EQ(rows, events);
    EXPECT_EQ(lines.size(), events + 9) << "title, headings and summary";
}
