#include "policy/policyPrograms.h"

#include <utility>

namespace mordhost {

PolicyPrograms::PolicyPrograms(const Policy& policy, std::filesystem::path directory)
    : m_policy(policy), m_directory(std::move(directory)) {}

PolicyPrograms::~PolicyPrograms() {
    for (auto& [name, program] : m_running) {
        program.LetGo(); // all end at the same time; their destructors wait
    }
}

std::filesystem::path PolicyPrograms::FileOf(const ProgramOfEvent& program) const {
    const auto found = m_policy.programs.find(program.name);
    if (found == m_policy.programs.end()) {
        throw DocumentError(program.where, "the policy has no program \"" + program.name + '"');
    }
    const std::filesystem::path& file = found->second;
    return WithProgramEnding(file.has_parent_path() ? file : m_directory / file);
}

void PolicyPrograms::GiveId(ConnectionEvent& event) {
    if (event.program) {
        event.pid = m_running.try_emplace(event.program->name, FileOf(*event.program)).first->second.Id();
    }
}

} // namespace mordhost
