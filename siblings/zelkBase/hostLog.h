// The service of ZelkBase for its host: the host takes the log records itself. mordRev does not ask for it.
#pragma once

#include "frame/interfaces.h"

// {D865608B-3895-48F4-8700-0F71BAC2222D}: IHostLog.
constexpr GUID SID_HostLog = {0xD865608B, 0x3895, 0x48F4, {0x87, 0x00, 0x0F, 0x71, 0xBA, 0xC2, 0x22, 0x2D}};

class IHostLog : public ISmartUnknown {
public:
    // From now on the factory answers SID_LogWriter with `writer`, and with a reference on it for the caller, instead
    // of a writer of its own; null ends that. Returns 0. Not to be called while a writer is being made, as Init of
    // mordRev does.
    //
    // ZelkBase itself holds no reference: the host keeps `writer` until it has ended that. A caller that was given the
    // writer holds one, and may release it as late as at the end of the process.
    virtual int32_t SetLogWriter(ILogWriter* writer) = 0; // 3
};
