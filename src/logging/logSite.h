// The source location of a log site, computed at compile time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "logging/logStream.h"

// A source location. The texts are static.
struct LogSite {
    const char* file;     // file name without its folder
    int32_t line;         // from 1
    const char* function; // with its class: "CMordRecv::HandleEvent"
};

// Returns the part of `path` behind its last separator of either kind; the whole path if it has none.
constexpr const char* LogFileName(const char* path) {
    const char* name = path;
    for (const char* c = path; *c != '\0'; ++c) {
        if (*c == '/' || *c == '\\') {
            name = c + 1;
        }
    }
    return name;
}

// The qualified name of a function, taken from __PRETTY_FUNCTION__: __FUNCTION__ lacks the class.
template <size_t capacity>
struct LogFunctionName {
    char text[capacity] = {};

    constexpr explicit LogFunctionName(const char (&signature)[capacity]) {
        // The name is between the last blank before the parameters and their parenthesis, which every signature has;
        // text in angle brackets belongs to a type. After a pointer result an asterisk precedes the name.
        const char* begin = signature;
        const char* end = signature;
        for (int depth = 0; depth != 0 || *end != '('; ++end) {
            depth += *end == '<' ? 1 : *end == '>' ? -1 : 0;
            if (depth == 0 && (*end == ' ' || (end == begin && (*end == '*' || *end == '&')))) {
                begin = end + 1;
            }
        }
        std::copy(begin, end, text);
    }
};

// Writes the part of a record that precedes its message: time, level, site and thread.
void BeginRecord(LogStream& stream, int32_t level, const LogSite& site);
