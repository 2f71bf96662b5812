// What the subcommands of mordhost do once their arguments have been read. Each throws what its run throws.
#pragma once

#include <string>

#include "app/decisionRun.h"
#include "live/liveLoop.h"

namespace mordhost {

struct ReplayOptions {
    std::string policy;
    std::string events;   // "-" for the standard input
    std::string programs; // the directory of the policy's programs; empty: that of mordhost
    RunOptions run;
};

struct RecordOptions {
    std::string out; // empty: the standard output
    LiveOptions live;
};

struct WatchOptions {
    std::string policy;
    RunOptions run;
    LiveOptions live;
};

void Replay(const ReplayOptions& options);
void Record(const RecordOptions& options); // Linux alone
void Watch(const WatchOptions& options);   // Linux alone

} // namespace mordhost
