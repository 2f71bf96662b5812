// What can be seen from outside while a case runs, in order: calls into the host, its records and its sink, log
// records, results. One line of text each; the two runs of a case must give the same lines.
#pragma once

#include <charconv>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace model {

// A number in decimal, as a part of a line.
class Decimal {
public:
    template <typename Number>
    explicit Decimal(Number value) : m_length(std::to_chars(m_digits, std::end(m_digits), value).ptr - m_digits) {}

    operator std::string_view() const { return {m_digits, static_cast<size_t>(m_length)}; }

private:
    char m_digits[24];
    std::ptrdiff_t m_length;
};

// The lines stand in one text, one behind the other: a run adds very many, and two runs are compared at once.
class Trace {
public:
    using Parts = std::initializer_list<std::string_view>;

    Trace() {
        m_text.reserve(16384); // what most cases need
        m_ends.reserve(256);
    }

    // One line, put together of its parts.
    void Add(Parts parts);
    void Add(std::string_view line) { Add({line}); }

    // A log record, without what differs from run to run: time, file, line and thread. Its function is `scope`, which
    // ends in "::" or is empty, and `function`.
    void AddLog(int32_t level, std::string_view scope, std::string_view function, Parts message);

    std::vector<std::string> Lines() const;

    friend bool operator==(const Trace&, const Trace&) = default;

private:
    void Append(Parts parts);

    std::string m_text;
    std::vector<size_t> m_ends; // of each line in the text
};

// `bytes` between quotes, with all that is no plain ASCII as \xNN.
std::string Shown(std::string_view bytes);
std::string Shown(const char* text); // null as "null"

// A text that says where two runs part, with some lines before; empty when they are equal.
std::string Difference(const Trace& model, const Trace& library);

} // namespace model
