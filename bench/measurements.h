// What libraryTiming measures. Each prints its figures, as they are named in docs/performance.md, and throws
// std::runtime_error when something is not as it has to be.
#pragma once

#include <filesystem>

#include "frame/interfaces.h"

namespace bench {

// Each event beside its floor, and each allow list beside its.
void MeasureEvents(IMordRev& receiver);

// Events on one and on two threads, and the floor likewise.
void MeasureThreads(IMordRev& receiver);

// What a log record costs. `receiver` has been initialised without logging; an ini file is written to the log directory
// `logFolder`, and logging is on afterwards. `writer` is a logger of the sibling's own.
void MeasureRecords(IMordRev& receiver, const std::filesystem::path& logFolder, ILogWriter& writer);

// The resident size after a hundred thousand and after ten million events.
void MeasureResidentSize(IMordRev& receiver);

} // namespace bench
