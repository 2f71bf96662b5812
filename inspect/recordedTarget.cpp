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

// The target holds its access layer by an owning pointer and would delete it as a Native, which is as large as each of
// the library's variants and has no virtual destructor. The recorder is larger. So it stays a member here, and the
// pointer in the target leads to it for the life of this object only: the target is left with the variant that it chose
// itself.
RecordedTarget::RecordedTarget(platform::Handle process, const Limits& limits)
    : m_target(process, 0), m_chosen(TakeAccess(m_target)), m_recorder(process, *m_chosen, limits) {
    std::unique_ptr<Native> recorder(&m_recorder);
    m_target.SwapAccess(recorder);
}

RecordedTarget::~RecordedTarget() {
    m_target.SwapAccess(m_chosen);
    (void)m_chosen.release(); // the recorder
}

} // namespace mordinspect
