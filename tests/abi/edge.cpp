#include "abi/edge.h"

#include "abi/journal.h"
#include "kit/siblings/dynamicLibrary.h"

namespace edge {

namespace {

using kit::DynamicLibrary;

// A library that stays loaded.
const DynamicLibrary& Load(const std::filesystem::path& file) {
    return *new DynamicLibrary(file);
}

const DynamicLibrary& Library() {
    static const DynamicLibrary& library = Load(LibraryPath());
    return library;
}

ConverterUse converterUse;

// The text lives as long as the process.
const Utf16* ConfigDirectory(const char* folder) {
    static std::u16string text;
    text = (kit::ProgramFolder() / folder / "").u16string();
    return reinterpret_cast<const Utf16*>(text.c_str());
}

const DynamicLibrary& LoadSibling(const char* name) {
    return Load(kit::ProgramFolder() / "abi/siblings" / kit::LibraryFile(name));
}

void SetUp(const DynamicLibrary& sibling, const SiblingSetUp& setUp) {
    reinterpret_cast<SetUpSiblingFunction>(sibling.Symbol("SetUpSibling"))(&setUp);
}

} // namespace

std::filesystem::path LibraryPath() {
    return kit::ProductFolder() / kit::LibraryFile("mordRev");
}

void* LibraryModule() {
    return Library().Handle();
}

Factory LibraryFactory() {
    return reinterpret_cast<Factory>(Library().Symbol("CreateZelkObject"));
}

Receiver* TheReceiver() {
    void* receiver = nullptr;
    LibraryFactory()(&receiverId, &receiver);
    return static_cast<Receiver*>(receiver);
}

void LoadSiblings(bool logging) {
    static const DynamicLibrary& ferrocore = LoadSibling("Ferrocore");
    static const DynamicLibrary& zelkBase = LoadSibling("ZelkBase");
    static const DynamicLibrary& moduleBase = LoadSibling("ModuleBase");
    SiblingSetUp setUp{};
    setUp.write = WriteJournal;
    setUp.baseModule = moduleBase.Handle();
    setUp.configDirectory = ConfigDirectory(logging ? "abi/logOn" : "abi/logOff");
    setUp.converterUse = &converterUse;
    SetUp(ferrocore, setUp);
    SetUp(zelkBase, setUp);
    SetUp(moduleBase, setUp);
}

const ConverterUse& UseOfConverter() {
    return converterUse;
}

std::string Journal() {
    return TakeJournal();
}

} // namespace edge
