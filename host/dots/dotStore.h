// Where a host keeps its dots.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mordhost {

class DotStore {
public:
    virtual ~DotStore() = default;

    // The dot of `guid` as the member of an answer that it makes (queryAnswer.h), or null when there is none. Valid
    // until the next deletion.
    virtual const std::string* Find(std::string_view guid) const = 0;

    // Deletes the dot of `guid`. Returns false when there is none, or when the deletion could not be made to last; the
    // dot does not serve again in this process either way. Throws nothing.
    virtual bool Delete(const std::string& guid) noexcept = 0;

    // How many dots there are.
    virtual size_t Size() const = 0;

    // Why a deletion did not last, in words; empty as long as all did.
    virtual const std::string& Trouble() const = 0;
};

} // namespace mordhost
