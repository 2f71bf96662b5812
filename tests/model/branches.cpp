#include "model/branches.h"

#include <algorithm>
#include <cmath>

namespace model {
namespace {

struct Kind {
    const char* name;
    uint32_t share;
};

constexpr std::array<Kind, static_cast<size_t>(Branch::Count)> kinds = {{
#define MODEL_BRANCH_KIND(name, share) {#name, share},
    MODEL_BRANCHES(MODEL_BRANCH_KIND)
#undef MODEL_BRANCH_KIND
}};

constexpr double sharesOf = 10000;

// Three standard deviations below what the share gives, but one where chance would hardly leave none.
uint64_t Floor(uint32_t share, uint64_t cases) {
    const double expected = static_cast<double>(cases) * share / sharesOf;
    const double least = expected - 3 * std::sqrt(expected);
    return static_cast<uint64_t>(std::max(least, expected >= 5 ? 1.0 : 0.0));
}

std::string Row(size_t branch, uint64_t count, uint64_t cases) {
    const double share = cases == 0 ? 0 : static_cast<double>(count) * sharesOf / static_cast<double>(cases);
    std::string row = "  " + std::string(kinds[branch].name);
    for (const auto& [column, cell] : {std::pair{36, std::to_string(count)},
                                       {50, std::to_string(std::lround(share))},
                                       {60, std::to_string(kinds[branch].share)}}) {
        row.resize(std::max(row.size() + 1, static_cast<size_t>(column) - cell.size()), ' ');
        row += cell;
    }
    return row + "\n";
}

} // namespace

void BranchCounts::Add(const BranchCounts& other) {
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        m_counts[branch] += other.m_counts[branch];
    }
}

std::string BranchCounts::Starved(uint64_t cases) const {
    std::string rows;
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        if (m_counts[branch] < Floor(kinds[branch].share, cases)) {
            rows += Row(branch, m_counts[branch], cases);
        }
    }
    return rows;
}

std::string BranchCounts::Table(uint64_t cases) const {
    std::string rows;
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        rows += Row(branch, m_counts[branch], cases);
    }
    return rows;
}

} // namespace model
