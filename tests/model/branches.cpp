#include "model/branches.h"

namespace model {
namespace {

constexpr std::array<const char*, static_cast<size_t>(Branch::Count)> names = {
#define MODEL_BRANCH_TEXT(name) #name,
    MODEL_BRANCHES(MODEL_BRANCH_TEXT)
#undef MODEL_BRANCH_TEXT
};

std::string Row(size_t branch, uint64_t count) {
    std::string row = "  " + std::string(names[branch]);
    row.resize(34, ' ');
    return row + std::to_string(count) + "\n";
}

} // namespace

void BranchCounts::Add(const BranchCounts& other) {
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        m_counts[branch] += other.m_counts[branch];
    }
}

std::string BranchCounts::Starved(uint64_t floor) const {
    std::string rows;
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        rows += m_counts[branch] < floor ? Row(branch, m_counts[branch]) : "";
    }
    return rows;
}

std::string BranchCounts::Table() const {
    std::string rows;
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        rows += Row(branch, m_counts[branch]);
    }
    return rows;
}

} // namespace model
