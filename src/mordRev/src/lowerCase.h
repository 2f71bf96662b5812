// Lower case for paths in reports.
#pragma once

#include <string>

// Turns 'A' to 'Z' into small letters, byte by byte. The bytes of other characters stay, whatever the locale.
inline void LowerCaseAscii(std::string& text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
}
