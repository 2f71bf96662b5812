// A service of ZelkBase for its host: the host takes the log records itself. The component does not use it.
#pragma once

#include "frame/interfaces.h"

// {D865608B-3895-48F4-8700-0F71BAC2222D}: IHostLog.
constexpr GUID SID_HostLog = {0xD865608B, 0x3895, 0x48F4, {0x87, 0x00, 0x0F, 0x71, 0xBA, 0xC2, 0x22, 0x2D}};

// Replaces the log writer that ZelkBase delivers. Factory: CreateZelkObject of ZelkBase, with SID_HostLog.
class IHostLog : public ISmartUnknown {
public:
    // From now on the factory returns `writer`, with a reference for the caller, for SID_LogWriter instead of a new
    // writer; null ends that. Returns 0. Must not be called while a writer is created, as Init of mordRev does.
    // Otherwise any thread may call. `writer` must meet the contract of ILogWriter: mordRev calls it from several
    // threads, some of them with its lock held.
    //
    // ZelkBase holds no reference: the host keeps `writer` until it has ended the replacement. A caller that got the
    // writer holds a reference and can release it as late as at the end of the process.
    virtual int32_t SetLogWriter(ILogWriter* writer) = 0; // 3
};
