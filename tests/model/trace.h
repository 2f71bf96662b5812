// What can be seen from outside while a case runs, in order: calls into the host, its records and its sink, log
// records, results. One line of text each; the two runs of a case must give the same lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace model {

class Trace {
public:
    void Add(std::string line) { m_lines.push_back(std::move(line)); }

    // A log record, without what differs from run to run: time, file, line and thread.
    void AddLog(int32_t level, std::string_view function, std::string_view message);

    const std::vector<std::string>& Lines() const { return m_lines; }

private:
    std::vector<std::string> m_lines;
};

// `bytes` between quotes, with all that is no plain ASCII as \xNN.
std::string Shown(std::string_view bytes);
std::string Shown(const char* text); // null as "null"

// A text that says where two runs part, with some lines before; empty when they are equal.
std::string Difference(const Trace& model, const Trace& library);

} // namespace model
