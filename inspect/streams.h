// The streams of the program.
#pragma once

namespace mordinspect {

// Has lines end as they are written, and a console take the texts as UTF-8. To be called before anything is written.
void PrepareStreams();

} // namespace mordinspect
