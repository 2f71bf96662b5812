#include "unit/mordRev/eightBitLocale.h"

#include <clocale>
#include <stdexcept>

EightBitLocale::EightBitLocale() : m_previous(std::setlocale(LC_ALL, nullptr)) {
    if (std::setlocale(LC_ALL, "German_Germany.1252") == nullptr) {
        throw std::runtime_error("there is no locale German_Germany.1252");
    }
}

EightBitLocale::~EightBitLocale() {
    std::setlocale(LC_ALL, m_previous.c_str());
}
