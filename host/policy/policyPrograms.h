// The programs of a policy, which events name.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "policy/connectionEvent.h"
#include "policy/policy.h"
#include "system/program.h"

namespace mordhost {

// Starts each program at most once. For use by one thread.
class PolicyPrograms {
public:
    // `directory` is the one for files without a directory. The policy must outlive this object.
    PolicyPrograms(const Policy& policy, std::filesystem::path directory);

    // Ends all started programs.
    ~PolicyPrograms();
    PolicyPrograms(const PolicyPrograms&) = delete;
    PolicyPrograms& operator=(const PolicyPrograms&) = delete;

    // The file of a program. Throws DocumentError if the policy has no such program.
    std::filesystem::path FileOf(const ProgramOfEvent& program) const;

    // If the event names a program, starts the program unless it runs, and sets `event.pid` to its process id. Throws
    // DocumentError as FileOf does, and RunError and Stopped as Program does.
    void GiveId(ConnectionEvent& event);

private:
    const Policy& m_policy;
    const std::filesystem::path m_directory;
    std::map<std::string, Program> m_running; // by name
};

} // namespace mordhost
