// The programs of a policy, as events name them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "events/connectionEvent.h"
#include "policy/policy.h"
#include "programs/program.h"

namespace mordhost {

class Programs {
public:
    // `directory` is where a file without a directory is looked for. The policy must outlive this object.
    Programs(const Policy& policy, std::filesystem::path directory);

    // Ends all that were started.
    ~Programs();
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;

    // The file of the program that the event names. Throws DocumentError where the policy has no such program.
    std::filesystem::path FileOf(const ProgramOfEvent& program) const;

    // Gives an event that names a program the id of its process, which is started if that has not been done yet.
    // Throws DocumentError as above, and RunError.
    void GiveId(ConnectionEvent& event);

private:
    const Policy& m_policy;
    const std::filesystem::path m_directory;
    std::map<std::string, Program> m_running; // by their names in the policy
};

} // namespace mordhost
