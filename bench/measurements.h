// What libraryTiming measures. Each prints its figures, as they are named in docs/performance.md, and throws
// std::runtime_error when the library fails.
#pragma once

#include <filesystem>

#include "frame/interfaces.h"

namespace bench {

// Each event beside its floor, and each allow list beside its.
void MeasureEvents(IMordRev& receiver);

// What a second thread gains with events, and with their floor: nine samples of each, or fewer when no second processor
// was free for long enough.
void MeasureThreads(IMordRev& receiver);

// A log record beside its floor, which appends the same bytes to a file. `receiver` has been initialised without
// logging; an ini file is written to the log directory `logFolder`, and logging is on afterwards.
void MeasureRecords(IMordRev& receiver, const std::filesystem::path& logFolder);

// The resident size after a hundred thousand and after ten million events.
void MeasureResidentSize(IMordRev& receiver);

} // namespace bench
