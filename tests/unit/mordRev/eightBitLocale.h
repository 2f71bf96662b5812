// The locale of a host that uses Latin letters in one byte each.
#pragma once

#include <string>

// Sets the C locale of the process to German in ISO-8859-1 or Windows-1252, in which tolower(0xC4) is 0xE4. Throws
// std::runtime_error if the system has no such locale. The destructor restores the previous one.
class EightBitLocale {
public:
    EightBitLocale();
    ~EightBitLocale();
    EightBitLocale(const EightBitLocale&) = delete;
    EightBitLocale& operator=(const EightBitLocale&) = delete;

private:
    const std::string m_previous;
};
