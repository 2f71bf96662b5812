#include "race/plainWriters.h"

#include "mordRev/src/mordRevTypes.h"

namespace race {
namespace {

// Written behind each call, so that the frame of the caller stays.
thread_local bool kept = false;

} // namespace

[[gnu::noinline]] void WriteDefenderMode(IMordRev& receiver, uint32_t mode) {
    kept = receiver.SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode);
}

[[gnu::noinline]] void WriteExceptionMode(IMordRev& receiver, uint32_t mode) {
    kept = receiver.SetProperty(PROP_EXCEPTION_MODE, &mode, sizeof mode);
}

[[gnu::noinline]] void WriteStarted(IMordRev& receiver, bool started) {
    kept = started ? receiver.Start() : receiver.Stop();
}

[[gnu::noinline]] void WriteReportSink(IMordRev& receiver, IReportSink* sink) {
    kept = receiver.SetReportSink(sink);
}

} // namespace race
