// The interface to where a host keeps its dots.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

// For use by one thread.
class DotStore {
public:
    enum class Result { answered, networkError, failed };

    virtual ~DotStore() = default;

    // Looks up the dots of all `guids` at once, so that a remote store needs one request. Writes to `dots`, in the same
    // order, the JSON value of each dot (DotValue in dotQuery.h), or null for a guid without a dot. The values are
    // valid until the next call.
    virtual Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) = 0;

    // Deletes the dot of `guid`. Returns false when there is none, or when the deletion is not permanent; the dot is
    // not found again by this process in either case.
    virtual bool Delete(const std::string& guid) noexcept = 0;

    // The number of dots.
    virtual size_t Size() const = 0;

    // Why a deletion is not permanent, for messages; empty if all are.
    virtual const std::string& Trouble() const = 0;
};

} // namespace mordhost
