#include "model/branches.h"

#include <algorithm>
#include <cmath>

namespace model {
namespace {

struct Kind {
    const char* name;
    uint32_t share;
    bool ofReceivers;
};

constexpr std::array<Kind, static_cast<size_t>(Branch::Count)> kinds = {{
#define MODEL_BRANCH_KIND(name, share) {#name, share, true},
    MODEL_BRANCHES_OF_RECEIVERS(MODEL_BRANCH_KIND)
#undef MODEL_BRANCH_KIND
#define MODEL_BRANCH_KIND(name, share) {#name, share, false},
        MODEL_BRANCHES_OF_CASES(MODEL_BRANCH_KIND)
#undef MODEL_BRANCH_KIND
}};

constexpr double sharesOf = 10000;

// Three standard deviations below the share; at least one where the share gives five.
uint64_t Floor(uint32_t share, uint64_t all) {
    const double expected = static_cast<double>(all) * share / sharesOf;
    const double least = expected - 3 * std::sqrt(expected);
    return static_cast<uint64_t>(std::max(least, expected >= 5 ? 1.0 : 0.0));
}

} // namespace

void BranchCounts::Add(const BranchCounts& other) {
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        m_counts[branch] += other.m_counts[branch];
    }
    m_receivers += other.m_receivers;
}

std::string BranchCounts::Row(size_t branch, uint64_t cases) const {
    const uint64_t all = kinds[branch].ofReceivers ? m_receivers : cases;
    const uint64_t count = m_counts[branch];
    const double share = all == 0 ? 0 : static_cast<double>(count) * sharesOf / static_cast<double>(all);
    std::string row = "  " + std::string(kinds[branch].name);
    for (const auto& [column, cell] : {std::pair{36, std::to_string(count)},
                                       {50, std::to_string(std::lround(share))},
                                       {60, std::to_string(kinds[branch].share)}}) {
        row.resize(std::max(row.size() + 1, static_cast<size_t>(column) - cell.size()), ' ');
        row += cell;
    }
    return row + "\n";
}

std::string BranchCounts::Starved(uint64_t cases) const {
    std::string rows;
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        if (m_counts[branch] < Floor(kinds[branch].share, kinds[branch].ofReceivers ? m_receivers : cases)) {
            rows += Row(branch, cases);
        }
    }
    return rows;
}

std::string BranchCounts::Table(uint64_t cases) const {
    std::string rows;
    for (size_t branch = 0; branch < m_counts.size(); ++branch) {
        rows += Row(branch, cases);
    }
    return rows;
}

} // namespace model
