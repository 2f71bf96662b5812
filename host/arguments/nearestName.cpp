#include "arguments/nearestName.h"

#include <algorithm>

namespace mordhost {

size_t EditDistance(std::string_view one, std::string_view other) {
    // Three rows of the table of distances between the beginnings of the two.
    std::vector<size_t> beforeLast(other.size() + 1);
    std::vector<size_t> last(other.size() + 1);
    std::vector<size_t> row(other.size() + 1);
    for (size_t j = 0; j <= other.size(); ++j) {
        row[j] = j;
    }
    for (size_t i = 1; i <= one.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (size_t j = 1; j <= other.size(); ++j) {
            const size_t replaced = last[j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            const bool exchanged = i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
            if (exchanged) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[other.size()];
}

std::string_view NearestName(std::string_view typed, const std::vector<std::string_view>& names) {
    std::string_view nearest;
    size_t least = 0;
    for (const std::string_view name : names) {
        const size_t distance = EditDistance(typed, name);
        const size_t most = std::max<size_t>(2, std::max(typed.size(), name.size()) / 3);
        if (distance <= most && (nearest.empty() || distance < least)) {
            nearest = name;
            least = distance;
        }
    }
    return nearest;
}

} // namespace mordhost
