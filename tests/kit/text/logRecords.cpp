#include "kit/text/logRecords.h"

#include <cctype>

namespace kit {

namespace {

// Walks along a record; goes bad at the first thing that is not as it must be.
class Cursor {
public:
    explicit Cursor(std::string_view text) : m_rest(text) {}

    bool Good() const { return m_good; }
    std::string_view Rest() const { return m_rest; }

    // `form` with 9 for any digit.
    void Form(std::string_view form) {
        for (const char c : form) {
            const bool fits = !m_rest.empty() && (c == '9' ? IsDigit(m_rest.front()) : m_rest.front() == c);
            if (!fits) {
                m_good = false;
                return;
            }
            m_rest.remove_prefix(1);
        }
    }

    void Number() {
        size_t digits = 0;
        while (digits < m_rest.size() && IsDigit(m_rest[digits])) {
            ++digits;
        }
        m_good = m_good && digits > 0;
        m_rest.remove_prefix(digits);
    }

    // What stands before `end`, which is taken too.
    std::string_view Until(std::string_view end) {
        const size_t at = m_rest.find(end);
        if (at == std::string_view::npos) {
            m_good = false;
            return {};
        }
        const std::string_view found = m_rest.substr(0, at);
        m_rest.remove_prefix(at + end.size());
        return found;
    }

private:
    static bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

    std::string_view m_rest;
    bool m_good = true;
};

std::string Expected(const char* level, std::string_view site, std::string_view message) {
    const size_t blank = site.find(' ');
    std::string record = "TIME [";
    record += level;
    record += "][";
    record += site.substr(0, blank);
    record += " LINE][";
    record += site.substr(blank + 1);
    record += "] [THREAD] ";
    record += message;
    record += "\r\n";
    return record;
}

} // namespace

std::string MaskRecord(std::string_view record) {
    Cursor cursor(record);
    cursor.Form("9999-99-99 99:99:99 [");
    const std::string level(cursor.Until("]["));
    const std::string file(cursor.Until(" "));
    cursor.Number();
    cursor.Form("][");
    const std::string function(cursor.Until("] ["));
    cursor.Number();
    cursor.Form("] ");
    if (!cursor.Good()) {
        return std::string(record);
    }
    std::string masked = "TIME [" + level + "][" + file + " LINE][" + function + "] [THREAD] ";
    masked += cursor.Rest();
    return masked;
}

std::string Trace(std::string_view site, std::string_view message) {
    return Expected("TRACE", site, message);
}

std::string Error(std::string_view site, std::string_view message) {
    return Expected("ERROR", site, message);
}

} // namespace kit
