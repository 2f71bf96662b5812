#include "recordedTarget.h"

#include <utility>

namespace mordinspect {

namespace {

std::unique_ptr<Native> TakeAccess(TargetProcess& target) {
    std::unique_ptr<Native> access;
    target.SwapAccess(access);
    return access;
}

} // namespace

// TargetProcess owns its access layer through a pointer and deletes it as a Native, which has no virtual destructor and
// the size of the library's variants. The recorder is larger. So the recorder is a member here, and the target only
// points to it during the life of this object; the destructor returns the original variant.
RecordedTarget::RecordedTarget(platform::Handle process, const Limits& limits)
    : m_target(process, 0), m_chosen(TakeAccess(m_target)), m_recorder(process, *m_chosen, limits) {
    std::unique_ptr<Native> recorder(&m_recorder);
    m_target.SwapAccess(recorder);
}

RecordedTarget::~RecordedTarget() {
    m_target.SwapAccess(m_chosen);
    (void)m_chosen.release(); // points to the recorder, which is a member
}

} // namespace mordinspect
