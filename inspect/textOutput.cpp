#include <algorithm>
#include <cstdio>

#include "output.h"
#include "platform/unicode.h"

namespace mordinspect {

namespace {

// The inspected process controls its texts, and they go to a terminal: control characters, which could steer it, become
// question marks.
std::string Utf8(WideText text) {
    std::replace_if(
        text.begin(), text.end(), [](WideChar c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }, WideChar{'?'});
    return platform::ToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

// Returns an address with as many digits as the bitness of its process requires.
std::string Address(uint64_t address, int bits) {
    char digits[20];
    std::snprintf(digits, sizeof digits, "%0*llx", bits / 4, static_cast<unsigned long long>(address));
    return digits;
}

void WriteLine(std::ostream& out, const char* label, const Reading<WideText>& reading) {
    out << label << (reading.value ? Utf8(*reading.value) : "unavailable: " + Words(reading.refusal)) << '\n';
}

// Writes the last line of an incomplete list.
void WriteCut(std::ostream& out, const std::optional<Refusal>& cut) {
    if (cut) {
        out << "  incomplete: " << Words(*cut) << '\n';
    }
}

std::string PathOf(const Module& module) {
    if (!module.path.value) {
        return "unavailable: " + Words(module.path.refusal);
    }
    const WideText& path = *module.path.value;
    return path.empty() ? "(unnamed)" : Utf8(path) + (module.pathIsCut ? " (truncated)" : "");
}

void WriteModules(std::ostream& out, int bits, const Listing<Module>& modules) {
    out << bits << "-bit modules";
    if (!modules.value) {
        out << "    unavailable: " << Words(modules.refusal) << '\n';
        return;
    }
    out << '\n';
    for (const Module& module : *modules.value) {
        char size[16];
        std::snprintf(size, sizeof size, "%8x", static_cast<unsigned>(module.size));
        out << "  " << Address(module.base, bits) << ' ' << size << "  " << PathOf(module) << '\n';
    }
    WriteCut(out, modules.cut);
}

void WriteThreads(std::ostream& out, int bits, const Listing<Thread>& threads) {
    out << "threads";
    if (!threads.value) {
        out << "           unavailable: " << Words(threads.refusal) << '\n';
        return;
    }
    out << '\n';
    for (const Thread& thread : *threads.value) {
        out << "  " << thread.id << "  ";
        if (thread.file.value) {
            out << "starts at " << Address(thread.start, bits) << " in " << Utf8(*thread.file.value) << '\n';
        } else {
            out << "start unavailable: " << Words(thread.file.refusal) << '\n';
        }
    }
    WriteCut(out, threads.cut);
}

} // namespace

std::string Hex(uint32_t value) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "0x%08X", static_cast<unsigned>(value));
    return digits;
}

std::string Words(const Refusal& refusal) {
    switch (refusal.kind) {
    case Refusal::Kind::status:
        return refusal.step + " (status " + Hex(refusal.code) + ")";
    case Refusal::Kind::error:
        return refusal.step + " (error " + std::to_string(refusal.code) + ")";
    case Refusal::Kind::limit:
        return refusal.step + " (the limit of " + Utf8(refusal.text) + " was reached)";
    default:
        return refusal.step + " (seen: " + Utf8(refusal.text) + ")";
    }
}

void WriteText(std::ostream& out, const Inspection& inspection) {
    out << "process           " << inspection.processId << ", " << inspection.bits << "-bit\n"
        << "parent            "
        << (inspection.parent.value ? std::to_string(*inspection.parent.value)
                                    : "unavailable: " + Words(inspection.parent.refusal))
        << '\n';
    WriteLine(out, "image path        ", inspection.imagePath);
    WriteLine(out, "command line      ", inspection.commandLine);
    WriteLine(out, "current directory ", inspection.currentDirectory);
    WriteModules(out, 32, inspection.modules32);
    WriteModules(out, 64, inspection.modules64);
    WriteThreads(out, inspection.bits, inspection.threads);
}

void WriteText(std::ostream& out, const std::vector<ProcessData>& processes) {
    out << " process   parent  image\n";
    for (const ProcessData& process : processes) {
        char ids[40];
        std::snprintf(ids, sizeof ids, "%8u %8u  ", static_cast<unsigned>(process.processId),
                      static_cast<unsigned>(process.parentProcessId));
        out << ids << Utf8(process.imageName) << '\n';
    }
}

} // namespace mordinspect
