#include "compare/eventBytes.h"

namespace mordhost {

void PutEvent(ByteWriter& out, const ConnectionEvent& event) {
    out.Put(event.flags);
    out.Put(event.pid);
    out.Put(event.remoteAddress);
    out.Put(event.remotePort);
    out.Put(event.localAddress);
    out.Put(event.localPort);
    out.Put(event.netDrv);
    out.Put(event.time);
    out.Put(event.name);
    out.Put(event.process);
    out.Put(static_cast<uint64_t>(event.line));
    out.Put(event.program ? std::optional(event.program->name) : std::nullopt);
}

void GetEvent(ByteReader& in, ConnectionEvent& event) {
    in.GetInto(event.flags);
    in.GetInto(event.pid);
    in.GetInto(event.remoteAddress);
    in.GetInto(event.remotePort);
    in.GetInto(event.localAddress);
    in.GetInto(event.localPort);
    in.GetInto(event.netDrv);
    event.time.assign(in.Text());
    event.name.assign(in.Text());
    event.process.assign(in.Text());
    event.line = static_cast<size_t>(in.Get<uint64_t>());
    std::optional<std::string> program;
    in.GetInto(program);
    event.program = program ? std::optional(ProgramOfEvent{*program, {}}) : std::nullopt;
}

} // namespace mordhost
