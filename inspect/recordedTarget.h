// A TargetProcess with a recording access layer.
#pragma once

#include <memory>

#include "native/targetProcess.h"
#include "recordingNative.h"

namespace mordinspect {

// Owns a TargetProcess and the RecordingNative that all its requests pass through. Belongs to one thread.
class RecordedTarget {
public:
    // The caller keeps `process` open for the life of the object. The time limit starts here. Throws std::bad_alloc.
    RecordedTarget(platform::Handle process, const Limits& limits);
    ~RecordedTarget();
    RecordedTarget(const RecordedTarget&) = delete;
    RecordedTarget& operator=(const RecordedTarget&) = delete;

    TargetProcess* operator->() { return &m_target; }
    RecordingNative& Access() { return m_recorder; }

private:
    TargetProcess m_target;
    std::unique_ptr<Native> m_chosen; // the variant that the library chose, while the recorder replaces it
    RecordingNative m_recorder;
};

} // namespace mordinspect
