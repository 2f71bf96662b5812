#include "output/heldOutput.h"

#include <string_view>

namespace mordhost {

void HeldOutput::Flush() {
    if (m_bar == nullptr) {
        m_out.flush();
        return;
    }
    const std::string_view rows = m_held.view();
    if (rows.empty()) {
        return;
    }
    m_bar->Clear();
    m_out.write(rows.data(), static_cast<std::streamsize>(rows.size()));
    m_out.flush();
    m_held.str({});
    m_bar->Redraw();
}

} // namespace mordhost
