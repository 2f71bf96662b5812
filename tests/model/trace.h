// What an observer sees while a case runs, in order: calls to the host, its records, its sink and its siblings, log
// records, results. One line each; model and library must give the same lines.
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

// One text holds all lines: a run adds very many, and comparing two runs is one comparison.
class Trace {
public:
    using Parts = std::initializer_list<std::string_view>;

    Trace() {
        m_text.reserve(16384); // what most cases need
        m_ends.reserve(256);
    }

    // One line, the parts joined.
    void Add(Parts parts);
    void Add(std::string_view line) { Add({line}); }

    // A log record, without time, file, line and thread, which differ from run to run. Its function is `scope`, which
    // is empty or ends in "::", and `function`.
    void AddLog(int32_t level, std::string_view scope, std::string_view function, Parts message);

    std::vector<std::string> Lines() const;

    void Clear();

    friend bool operator==(const Trace&, const Trace&) = default;

private:
    void Append(Parts parts);

    std::string m_text;
    std::vector<size_t> m_ends; // of each line in the text
};

// `bytes` between quotes, with all that is no plain ASCII as \xNN.
std::string Shown(std::string_view bytes);
std::string Shown(const char* text); // null as "null"

// The first lines that differ and some lines before them; empty when the traces are equal. Long lines are cut.
std::string Difference(const Trace& model, const Trace& library);

} // namespace model
