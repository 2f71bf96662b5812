// The file descriptor by which poll notices a stop request.
#pragma once

namespace mordhost {

// Becomes readable at the first stop request and stays readable; do not read it. Before HoldStopRequests it is -1,
// which poll ignores.
int StopHandle();

} // namespace mordhost
