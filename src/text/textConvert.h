// Conversion between narrow UTF-8 and wide UTF-16 text, through the converter of the base library.
//
// Neither routine reports a failure: without a converter both give an empty text, whatever the source. The converter is
// looked for once in the process, at the first conversion of a text that is not empty; what was missing then stays
// missing. Any thread may call.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/wideChar.h"

// The wide form of NUL-ended narrow text. `text` may be null, which is empty.
std::basic_string<WideChar> Utf8ToWide(const char* text);

// The same, for a look at the text while the object lives: a short one takes no memory from the heap.
class WideText {
public:
    explicit WideText(const char* text);
    WideText(const WideText&) = delete;
    WideText& operator=(const WideText&) = delete;

    std::basic_string_view<WideChar> View() const { return m_view; }

private:
    std::array<WideChar, 2048> m_onStack; // not cleared: that would cost what it gains
    std::unique_ptr<WideChar[]> m_onHeap;
    std::basic_string_view<WideChar> m_view;
};

// The narrow form of NUL-ended wide text. `text` may be null, which is empty.
std::string WideToUtf8(const WideChar* text);
