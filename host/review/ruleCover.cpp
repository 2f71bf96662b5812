#include "review/ruleCover.h"

#include <algorithm>

namespace mordhost {

namespace {

bool CoversOne(const PortRange& wide, const PortRange& narrow) {
    return wide.first <= narrow.first && narrow.last <= wide.last;
}

bool CoversOne(const AddressRange& wide, const AddressRange& narrow) {
    return wide.prefixBits <= narrow.prefixBits && wide.Contains(narrow.first);
}

// An empty list is no condition.
template <typename Range>
bool CoversAll(const std::vector<Range>& wide, const std::vector<Range>& narrow) {
    if (wide.empty() || narrow.empty()) {
        return wide.empty();
    }
    return std::all_of(narrow.begin(), narrow.end(), [&wide](const Range& range) {
        return std::any_of(wide.begin(), wide.end(),
                           [&range](const Range& candidate) { return CoversOne(candidate, range); });
    });
}

} // namespace

bool Covers(const Rule& wide, const Rule& narrow) {
    return CoversAll(wide.localPorts, narrow.localPorts) && CoversAll(wide.localAddresses, narrow.localAddresses) &&
           CoversAll(wide.remoteAddresses, narrow.remoteAddresses);
}

} // namespace mordhost
