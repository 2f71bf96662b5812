#include "programs/programs.h"

#include <utility>

namespace mordhost {

Programs::Programs(const Policy& policy, std::filesystem::path directory)
    : m_policy(policy), m_directory(std::move(directory)) {}

Programs::~Programs() {
    for (auto& [name, program] : m_running) {
        program.LetGo(); // so that they end side by side, and are waited for afterwards
    }
}

std::filesystem::path Programs::FileOf(const ProgramOfEvent& program) const {
    const auto found = m_policy.programs.find(program.name);
    if (found == m_policy.programs.end()) {
        throw DocumentError(program.where, "the policy has no program \"" + program.name + '"');
    }
    const std::filesystem::path& file = found->second;
    return WithProgramEnding(file.has_parent_path() ? file : m_directory / file);
}

void Programs::GiveId(ConnectionEvent& event) {
    if (event.program) {
        event.pid = m_running.try_emplace(event.program->name, FileOf(*event.program)).first->second.Id();
    }
}

} // namespace mordhost
