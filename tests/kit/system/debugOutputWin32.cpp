// The system reports debug output to a debugger by an exception, which a handler in the process sees as well.
#include "kit/system/debugOutput.h"

#include <mutex>
#include <stdexcept>

#include <windows.h>

#include "kit/text/utf.h"

namespace kit {

namespace {

constexpr DWORD debugPrintWide = 0x4001000A; // parameters: length with the NUL, text, then the same in narrow form
constexpr DWORD debugPrint = 0x40010006;     // parameters: length with the NUL, text in the ANSI code page

std::mutex textLock;
std::string* textOfCapture = nullptr;

void Keep(std::string_view text) {
    const std::lock_guard lock(textLock);
    if (textOfCapture != nullptr) {
        *textOfCapture += text;
    }
}

std::string FromAnsi(const char* text) {
    std::wstring wide(static_cast<size_t>(::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0)), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
    return ToNarrow(wide.c_str());
}

LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == debugPrintWide) {
        Keep(ToNarrow(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1])));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    if (record.ExceptionCode == debugPrint) {
        Keep(FromAnsi(reinterpret_cast<const char*>(record.ExceptionInformation[1])));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

struct DebugOutput::Capture {
    std::string text;
    void* handler = ::AddVectoredExceptionHandler(1, OnException);
};

DebugOutput::DebugOutput() : m_capture(std::make_unique<Capture>()) {
    if (m_capture->handler == nullptr) {
        throw std::runtime_error("the debug output cannot be captured");
    }
    const std::lock_guard lock(textLock);
    textOfCapture = &m_capture->text;
}

DebugOutput::~DebugOutput() {
    ::RemoveVectoredExceptionHandler(m_capture->handler);
    const std::lock_guard lock(textLock);
    textOfCapture = nullptr;
}

std::string DebugOutput::Text() const {
    const std::lock_guard lock(textLock);
    return m_capture->text;
}

} // namespace kit
