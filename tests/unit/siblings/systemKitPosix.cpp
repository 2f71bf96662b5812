#include <cstdlib>
#include <fstream>

#include <dlfcn.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "unit/siblings/systemKit.h"

namespace siblingTest {

std::filesystem::path ProgramFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::filesystem::path LibraryFile(const std::string& name) {
    return ProgramFolder().parent_path() / "lib" / ("lib" + name + ".so");
}

void* LoadLibraryFile(const std::filesystem::path& file) {
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* FindExport(void* library, const char* name) {
    return dlsym(library, name);
}

void* FindLoadedLibrary(const std::string& name) {
    return dlopen(("lib" + name + ".so").c_str(), RTLD_NOLOAD | RTLD_LAZY);
}

void SetVariable(const std::string& name, const WideString& value) {
    if (value.empty()) {
        unsetenv(name.c_str());
    } else {
        setenv(name.c_str(), std::filesystem::path(value).c_str(), 1);
    }
}

bool RunPrograms(const std::string& name, const std::vector<std::vector<std::string>>& arguments) {
    const std::string program = ProgramFolder() / name;
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
