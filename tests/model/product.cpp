#include "model/product.h"

#include <cstdlib>
#include <iostream>
#include <list>
#include <stdexcept>
#include <string>

#include "model/siblings.h"

namespace model {
namespace {

std::filesystem::path FileToLoad() {
    static unsigned kept = 0;
    const std::filesystem::path file = kit::ProductFolder() / kit::LibraryFile("mordRev");
    if (!keepsLibraries || kept++ == 0) {
        return file;
    }
    const std::filesystem::path copy = ScratchFolder() / kit::LibraryFile("mordRev" + std::to_string(kept));
    std::filesystem::copy_file(file, copy);
    return copy;
}

} // namespace

Product::Product(const SiblingState& state, Trace& trace) {
    LoadSiblings();
    UseSiblings(&state, &trace);
    m_file = FileToLoad();
    m_library = kit::DynamicLibrary(m_file);
    const auto create = reinterpret_cast<CreateZelkObjectFunction>(m_library.Symbol("CreateZelkObject"));
    void* out = nullptr;
    if (create == nullptr || create(&IID_IMordRev, &out) != 0 || out == nullptr) {
        throw std::runtime_error("the library creates no receiver");
    }
    m_receiver = static_cast<IMordRev*>(out);
}

Product::~Product() {
    m_receiver->Destroy(1); // the only pointer to it is in the library, which is unloaded next
    if (keepsLibraries) {
        static auto& kept = *new std::list<kit::DynamicLibrary>;
        kept.push_back(std::move(m_library));
        return;
    }
    m_library.Close();
    if (kit::FindLoadedLibrary(m_file) != nullptr) {
        std::cerr << m_file << " is still loaded\n";
        std::abort(); // the next receiver would inherit its state
    }
}

} // namespace model
