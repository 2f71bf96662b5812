// The bodies of gateEnter.h.
#include "kit/system/scriptedProcess/gate.h"

#include <cstdarg>
#include <cstring>
#include <stdexcept>

#include "kit/system/scriptedProcess/internals.h"
#include "native/gateEnter.h"

namespace scripted {

namespace {

Gate current;

void CountRead(uint64_t address) {
    if (++Instance().reads > Instance().readLimit) {
        throw GateFault{address};
    }
}

// A whole walk copies from address 0 a few times at most: TEB, PEB, the loader's data, one entry and its name.
void CountReadOfNothing() {
    constexpr uint64_t most = 8;
    if (++current.readsOfNothing > most) {
        throw std::logic_error("a walk goes on behind a link of 0");
    }
}

void ReadOwn(uint64_t address, void* destination, uint32_t size) {
    if (current.memory.Read(address, destination, size) != size) {
        throw GateFault{address};
    }
}

} // namespace

Gate& GateInstance() {
    return current;
}

Gate& ResetGate() {
    current = Gate{};
    GateEnabled = 1;
    return current;
}

} // namespace scripted

using namespace scripted;

extern "C" {

int32_t GateEnabled = 1;

uint64_t GateCall(uint64_t function, int32_t count, ...) {
    Gate& gate = GateInstance();
    const auto name = gate.names.find(function);
    Note([&] {
        return "GateCall(" + (name == gate.names.end() ? Hex(function) : name->second) + ", " + std::to_string(count) +
               ")";
    });
    if (GateEnabled == 0) {
        return 0;
    }
    GateArguments arguments;
    va_list list;
    va_start(list, count);
    for (int32_t i = 0; i < count; ++i) {
        arguments.push_back(va_arg(list, uint64_t));
    }
    va_end(list);
    gate.lastArguments = arguments;
    const auto body = gate.functions.find(function);
    if (body == gate.functions.end()) {
        throw GateFault{function};
    }
    return body->second(arguments);
}

void GateCopyIn(void* destination, uint64_t source, uint32_t size) {
    Note([&] { return "GateCopyIn(" + Hex(source) + ", " + std::to_string(size) + ")"; });
    if (source == 0) {
        CountReadOfNothing();
        return;
    }
    current.readsOfNothing = 0;
    CountRead(source);
    if (destination != nullptr && size != 0) {
        ReadOwn(source, destination, size);
    }
}

bool GateCompare(const void* buffer, uint64_t address, uint32_t size) {
    Note([&] { return "GateCompare(" + Hex(address) + ", " + std::to_string(size) + ")"; });
    if (buffer == nullptr || address == 0 || size == 0) {
        return false;
    }
    CountRead(address);
    // As far as the first difference: what lies behind it need not be there.
    const char* const bytes = static_cast<const char*>(buffer);
    for (uint32_t i = 0; i < size; ++i) {
        char byte = 0;
        ReadOwn(address + i, &byte, 1);
        if (byte != bytes[i]) {
            return false;
        }
    }
    return true;
}

uint64_t GateThreadBlock() {
    Note([&] { return std::string("GateThreadBlock()"); });
    return GateInstance().threadBlock;
}
}
