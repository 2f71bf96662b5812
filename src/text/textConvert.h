// Conversion between UTF-8 and UTF-16 through the converter of the base library.
//
// Neither direction reports a failure, and nothing is logged: without a converter the result is empty. The process
// looks for the converter once, at the first conversion of a non-empty text, and never again, even if ZelkBase is
// loaded later. Any thread may call; each call holds a reference on the shared converter, and no lock. Throws only
// std::bad_alloc.
//
// A source of more than about 10^9 characters is truncated, since the converter takes 32-bit lengths.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/wideChar.h"

// Returns the UTF-16 form of the NUL-terminated `text`, up to its first NUL. Null counts as empty.
std::basic_string<WideChar> Utf8ToWide(const char* text);

// The UTF-16 form of a text without a std::basic_string: a short text (up to 1022 bytes) needs no heap memory. The view
// is valid as long as the object.
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

// Returns the UTF-8 form of the NUL-terminated `text`, up to its first NUL. Null counts as empty.
std::string WideToUtf8(const WideChar* text);
