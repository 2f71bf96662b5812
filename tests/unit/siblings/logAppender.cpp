// logAppender MODULE TAG COUNT: writes records through ZelkBase. Exits with 0 if all calls succeeded. The environment
// sets the log directory.
#include <cstdlib>
#include <iostream>

#include "unit/siblings/logRecords.h"

int main(int argc, char** argv) {
    using namespace siblingTest;
    if (argc != 4) {
        std::cerr << "usage: logAppender MODULE TAG COUNT\n";
        return 2;
    }
    const SiblingLibrary library{std::string("ZelkBase")};
    const auto writer = library.Make<ILogWriter>(SID_LogWriter);
    const std::string module = argv[1];
    const bool started = writer->Start(WideString(module.begin(), module.end()).c_str(), 0) == 0;
    return started && WriteNumbered(*writer.Get(), argv[2], std::atoi(argv[3])) ? 0 : 1;
}
