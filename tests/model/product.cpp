#include "model/product.h"

#include <stdexcept>
#include <string>

#include "model/module.h"
#include "model/siblings.h"

namespace model {
namespace {

std::filesystem::path FileToLoad() {
    static unsigned kept = 0;
    const std::filesystem::path file = ProductFolder() / LibraryFile("mordRev");
    if (!keepsLibraries || kept++ == 0) {
        return file;
    }
    const std::filesystem::path copy = ScratchFolder() / LibraryFile("mordRev" + std::to_string(kept));
    std::filesystem::copy_file(file, copy);
    return copy;
}

} // namespace

Product::Product(const SiblingState& state, Trace& trace) {
    LoadSiblings();
    UseSiblings(&state, &trace);
    m_file = FileToLoad();
    m_module = LoadModule(m_file);
    const auto create = reinterpret_cast<CreateZelkObjectFunction>(SymbolOf(m_module, "CreateZelkObject"));
    void* out = nullptr;
    if (create(&IID_IMordRev, &out) != 0 || out == nullptr) {
        throw std::runtime_error("the library gives no receiver");
    }
    m_receiver = static_cast<IMordRev*>(out);
}

Product::~Product() {
    m_receiver->Destroy(1); // nothing in the library refers to it but the pointer that goes with the library
    if (!keepsLibraries) {
        UnloadModule(m_module, m_file);
    }
}

} // namespace model
