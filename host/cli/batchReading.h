// Reads events in batches.
#pragma once

#include <exception>
#include <functional>

#include "compare/policySide.h"
#include "output/progressBar.h"
#include "policy/eventSource.h"

namespace mordhost {

// Calls `decide` with batches of events until the source ends or a stop request arrives. From a live source, each batch
// has one event. An event that names a program is alone in its batch. If an event cannot be read, the ones before it
// are decided first. Throws DocumentError, FileError, and what `decide` throws.
void DecideInBatches(EventSource& events, ProgressBar& bar, const std::function<void(EventBatch&)>& decide);

} // namespace mordhost
