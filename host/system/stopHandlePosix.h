// What a wait can include, so that a request to stop ends it.
#pragma once

namespace mordhost {

// Becomes readable at the first request to stop, and stays so; nobody is to read it. -1 before HoldStopRequests, which
// poll passes over.
int StopHandle();

} // namespace mordhost
