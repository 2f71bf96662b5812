// Where a log site stands, worked out at compile time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

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
        // The name stands between the last blank before the parameters and their parenthesis; what stands in angle
        // brackets is part of a type.
        const std::string_view whole(signature, capacity - 1);
        size_t begin = 0;
        size_t end = 0;
        for (int depth = 0; end < whole.size() && (depth != 0 || whole[end] != '('); ++end) {
            depth += whole[end] == '<' ? 1 : whole[end] == '>' ? -1 : 0;
            if (depth == 0 && whole[end] == ' ') {
                begin = end + 1;
            }
        }
        for (size_t i = begin; i < end; ++i) {
            text[i - begin] = whole[i];
        }
        // A pointer result leaves its asterisk at the name.
        while (text[0] == '*' || text[0] == '&') {
            for (size_t i = 0; i + 1 < capacity; ++i) {
                text[i] = text[i + 1];
            }
        }
    }
};

// Writes everything of a record that stands before its message.
void BeginRecord(LogStream& stream, int32_t level, const LogSite& site);
