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
