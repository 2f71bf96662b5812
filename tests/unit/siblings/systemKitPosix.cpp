#include <cstdlib>
#include <fstream>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "kit/siblings/dynamicLibrary.h"
#include "unit/siblings/systemKit.h"

namespace siblingTest {

void SetVariable(const std::string& name, const WideString& value) {
    if (value.empty()) {
        unsetenv(name.c_str());
    } else {
        setenv(name.c_str(), std::filesystem::path(value).c_str(), 1);
    }
}

bool RunPrograms(const std::string& name, const std::vector<std::vector<std::string>>& arguments) {
    const std::string program = kit::ProgramFolder() / name;
    std::vector<pid_t> started;
    for (std::vector<std::string> list : arguments) {
        std::vector<char*> pointers{const_cast<char*>(program.c_str())};
        for (std::string& argument : list) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        pid_t process = 0;
        if (posix_spawn(&process, program.c_str(), nullptr, nullptr, pointers.data(), environ) == 0) {
            started.push_back(process);
        }
    }
    bool good = started.size() == arguments.size();
    for (const pid_t process : started) {
        int status = -1;
        good = waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0 && good;
    }
    return good;
}

WideString MachineIdOfSystem() {
    std::string id;
    std::ifstream("/etc/machine-id") >> id;
    return {id.begin(), id.end()};
}

} // namespace siblingTest
