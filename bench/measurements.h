// The measurements of libraryTiming. Each prints its figures under the names that tools/benchLimits reads, and throws
// std::runtime_error if the library fails.
#pragma once

#include <filesystem>

#include "frame/interfaces.h"

namespace bench {

// Events and allow lists, each with its floor.
void MeasureEvents(IMordRev& receiver);

// The gain by a second thread, for events and for their floor: nine samples of each, fewer if no second processor was
// free for long enough.
void MeasureThreads(IMordRev& receiver);

// A log record, with its floor, which appends the same bytes to a file. `receiver` must be initialised without logging.
// Writes an ini file to the log directory `logFolder`; logging is on afterwards.
void MeasureRecords(IMordRev& receiver, const std::filesystem::path& logFolder);

// The resident size after a hundred thousand and after ten million events.
void MeasureResidentSize(IMordRev& receiver);

} // namespace bench
