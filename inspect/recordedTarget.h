// A TargetProcess whose requests go through a RecordingNative.
#pragma once

#include <memory>

#include "native/targetProcess.h"
#include "recordingNative.h"

namespace mordinspect {

class RecordedTarget {
public:
    // As for a TargetProcess, the caller keeps `process` open.
    RecordedTarget(platform::Handle process, const Limits& limits);
    ~RecordedTarget();
    RecordedTarget(const RecordedTarget&) = delete;
    RecordedTarget& operator=(const RecordedTarget&) = delete;

    TargetProcess* operator->() { return &m_target; }
    RecordingNative& Access() { return m_recorder; }

private:
    TargetProcess m_target;
    std::unique_ptr<Native> m_chosen; // by the library, and out of `m_target` meanwhile
    RecordingNative m_recorder;
};

} // namespace mordinspect
