#include "unit/host/exampleHere.h"

#include <regex>
#include <sstream>

#include "system/filePath.h"
#include "unit/host/toldPath.h"

namespace mordhostTest {

namespace {

constexpr auto maskedId = "pid N";
const std::string ending = MORDHOST_PROGRAM_ENDING;

// The file name of the program in a report, or an empty text.
std::string NameHere(const std::string& program) {
    const std::string path = ToldPath(mordhost::PathOf(MORDHOST_PROGRAMS) / mordhost::PathOf(program + ending));
    return path.empty() ? path : path.substr(path.find_last_of("/\\") + 1);
}

bool IsProgram(const std::string& process) {
    return process == "waiter32" || process == "waiter64";
}

std::string Padded(std::string text, size_t width, char filler) {
    text.resize(width, filler);
    return text;
}

// The cell of a row on this platform.
std::string CellHere(const std::string& cell) {
    const std::string text = cell.substr(0, cell.find_last_not_of(' ') + 1);
    if (!IsProgram(text)) {
        return text;
    }
    const std::string name = NameHere(text);
    return name.empty() ? maskedId : name;
}

} // namespace

std::string TableHere(const std::string& expected) {
    std::istringstream lines(expected);
    std::string here;
    size_t column = std::string::npos; // column of the process in the table
    size_t width = 0;
    for (std::string line; std::getline(lines, line);) {
        const size_t heading = line.find("PROCESS");
        if (heading != std::string::npos) {
            column = heading;
            width = line.find_first_not_of(' ', heading + std::string("PROCESS").size()) - heading - 2;
        }
        if (line.empty() || column == std::string::npos) {
            column = std::string::npos;
            here += line + '\n';
            continue;
        }
        const std::string cell = line.substr(column, width);
        here += line.substr(0, column) + Padded(CellHere(cell), width + ending.size(), cell.back() == '-' ? '-' : ' ') +
                line.substr(column + width) + '\n';
    }
    return here;
}

std::string ReportsHere(const std::string& expected) {
    std::string here = expected;
    for (const std::string program : {"waiter32", "waiter64"}) {
        const std::string name = NameHere(program);
        here = std::regex_replace(here, std::regex("\"(BIN/)?" + program + "\""),
                                  name.empty() ? "\"\"" : "\"$1" + name + '"');
    }
    return here;
}

std::string MaskIds(const std::string& table) {
    static const std::regex id("pid [0-9]+ +");
    return std::regex_replace(table, id, Padded(maskedId, std::string("waiter32").size() + ending.size() + 2, ' '));
}

std::string MaskDirectories(const std::string& reports) {
    static const std::regex directory("(\"proc_path\": \")[^\\n]*[/\\\\]");
    return std::regex_replace(reports, directory, "$1BIN/");
}

} // namespace mordhostTest
