#include "review/libraryTrial.h"

#include "frame/values.h"

namespace mordhost {

LibraryTrial::LibraryTrial(const std::filesystem::path& directory)
    : m_libraries(directory), m_log(m_libraries.Base(), false) {
    if (!m_libraries.Receiver().Init(&m_dots)) {
        throw LoadError("the library does not start: it could not set up its logging");
    }
}

LibraryTrial::~LibraryTrial() {
    m_libraries.Receiver().ClearAllowList();
    m_libraries.Receiver().Uninit();
}

bool LibraryTrial::TakesAllowList(const std::string& text) {
    return m_libraries.Receiver().SetAllowList(text.c_str());
}

bool LibraryTrial::TakesActions(std::string text) {
    return m_libraries.Receiver().SetProperty(PROP_ACTION_JSON, text.data(), static_cast<uint32_t>(text.size() + 1));
}

} // namespace mordhost
