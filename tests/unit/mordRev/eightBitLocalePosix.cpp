// The build makes the locale with localedef, because systems usually have none with one byte per character.
#include "unit/mordRev/eightBitLocale.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>

EightBitLocale::EightBitLocale() : m_previous(std::setlocale(LC_ALL, nullptr)) {
    setenv("LOCPATH", MORDREV_TEST_LOCALES, 1);
    if (std::setlocale(LC_ALL, "de_DE.ISO-8859-1") == nullptr) {
        throw std::runtime_error("there is no locale de_DE.ISO-8859-1 in " MORDREV_TEST_LOCALES);
    }
}

EightBitLocale::~EightBitLocale() {
    std::setlocale(LC_ALL, m_previous.c_str());
    unsetenv("LOCPATH");
}
