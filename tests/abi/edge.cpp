#include "abi/edge.h"

#include "abi/journal.h"
#include "abi/library.h"

namespace edge {

namespace {

ConverterUse converterUse;

// The text lives as long as the process.
const Utf16* ConfigDirectory(const char* folder) {
    static std::u16string text;
    text = (ProgramFolder() / folder / "").u16string();
    return reinterpret_cast<const Utf16*>(text.c_str());
}

void SetUp(void* sibling, const SiblingSetUp& setUp) {
    reinterpret_cast<SetUpSiblingFunction>(FindExport(sibling, "SetUpSibling"))(&setUp);
}

} // namespace

void* LibraryModule() {
    static void* const module = LoadFile(ProgramFolder() / ABI_LIBRARY_FILE);
    return module;
}

Factory LibraryFactory() {
    return reinterpret_cast<Factory>(FindExport(LibraryModule(), "CreateZelkObject"));
}

Receiver* TheReceiver() {
    void* receiver = nullptr;
    LibraryFactory()(&receiverId, &receiver);
    return static_cast<Receiver*>(receiver);
}

void LoadSiblings(bool logging) {
    void* const ferrocore = LoadFile(ProgramFolder() / ABI_FERROCORE_FILE);
    void* const zelkBase = LoadFile(ProgramFolder() / ABI_ZELKBASE_FILE);
    void* const moduleBase = LoadFile(ProgramFolder() / ABI_MODULEBASE_FILE);
    SiblingSetUp setUp{};
    setUp.write = WriteJournal;
    setUp.baseModule = moduleBase;
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
