// Where a log site stands, worked out at compile time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "logging/logStream.h"

struct LogSite {
    const char* file;     // bare file name
    int32_t line;         // 1 is the first
    const char* function; // with its class: "CMordRecv::HandleEvent"
};

// The file name behind the last separator of either kind; the whole path when it has none.
constexpr const char* LogFileName(const char* path) {
    const char* name = path;
    for (const char* c = path; *c != '\0'; ++c) {
        if (*c == '/' || *c == '\\') {
            name = c + 1;
        }
    }
    return name;
}

// The qualified name of a function, cut out of the compiler's full signature: the name by itself lacks the class.
template <size_t capacity>
struct LogFunctionName {
    char text[capacity] = {};

    constexpr explicit LogFunctionName(const char (&signature)[capacity]) {
        // The name stands between the last blank before the parameters and their parenthesis, which each signature
        // has; what stands in angle brackets is part of a type. A pointer result leaves its asterisk before the name.
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

// Writes everything of a record that stands before its message.
void BeginRecord(LogStream& stream, int32_t level, const LogSite& site);
