#include "abi/msvcHost/freestanding.h"

extern "C" {

__declspec(dllimport) void* __stdcall GetStdHandle(uint32_t which);
__declspec(dllimport) int __stdcall WriteFile(void* file, const void* bytes, uint32_t size, uint32_t* written,
                                              void* overlapped);

// The compiler makes calls to these by itself.
void* memcpy(void* to, const void* from, size_t size) {
    for (size_t i = 0; i < size; ++i) {
        static_cast<char*>(to)[i] = static_cast<const char*>(from)[i];
    }
    return to;
}

void* memset(void* to, int byte, size_t size) {
    for (size_t i = 0; i < size; ++i) {
        static_cast<char*>(to)[i] = static_cast<char>(byte);
    }
    return to;
}

size_t strlen(const char* text) {
    size_t length = 0;
    while (text[length] != '\0') {
        ++length;
    }
    return length;
}

int _purecall() {
    Print("a pure virtual operation was called\n");
    ExitProcess(71);
}

} // extern "C"

namespace {

constexpr uint32_t standardOutput = static_cast<uint32_t>(-11);

template <typename Character>
bool Same(const Character* left, const Character* right) {
    while (*left != 0 && *left == *right) {
        ++left;
        ++right;
    }
    return *left == *right;
}

} // namespace

void Print(const char* text) {
    uint32_t written = 0;
    WriteFile(GetStdHandle(standardOutput), text, static_cast<uint32_t>(strlen(text)), &written, nullptr);
}

void Print(const wchar_t* text) {
    for (; *text != 0; ++text) {
        const char narrow[2] = {*text < 0x80 ? static_cast<char>(*text) : '?', '\0'};
        Print(narrow);
    }
}

void Print(uint32_t number) {
    char digits[11] = {};
    char* first = digits + 10;
    do {
        *--first = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number != 0);
    Print(first);
}

void Print(bool value) {
    Print(value ? "true" : "false");
}

bool SameText(const char* left, const char* right) {
    return Same(left, right);
}

bool SameText(const wchar_t* left, const wchar_t* right) {
    return Same(left, right);
}

const wchar_t* BesideTheProgram(const wchar_t* name) {
    static wchar_t path[1024];
    constexpr uint32_t capacity = 1000;
    const uint32_t length = GetModuleFileNameW(nullptr, path, capacity);
    uint32_t end = length;
    while (end > 0 && path[end - 1] != L'\\') {
        --end;
    }
    do {
        path[end++] = *name;
    } while (*name++ != 0 && end < capacity);
    path[end] = 0;
    return path;
}
