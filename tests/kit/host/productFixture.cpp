#include "kit/host/productFixture.h"

#include <deque>

namespace kit {

DynamicLibrary* ProductFixture::LoadProduct() {
    static std::deque<DynamicLibrary>* const loaded = new std::deque<DynamicLibrary>; // never unloaded
    std::filesystem::path file = ProductFolder() / LibraryFile("mordRev");
    if (!loaded->empty()) {
        const std::string number = std::to_string(loaded->size());
        const std::filesystem::path copy =
            ScriptedSiblings::Instance().LogDirectory() / LibraryFile("mordRev" + number);
        std::filesystem::copy_file(file, copy);
        file = copy;
    }
    return &loaded->emplace_back(file);
}

} // namespace kit
