#include "docs/markdown.h"

#include <cctype>
#include <sstream>
#include <stdexcept>

namespace docs {

namespace {

std::string Trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    std::istringstream in{std::string(text)};
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

bool IsFence(std::string_view line) {
    return line.starts_with("```");
}

// A bar outside a code span ends a cell.
Row SplitRow(std::string_view line) {
    Row cells;
    std::string cell;
    bool inSpan = false;
    for (const char c : line.substr(1)) {
        inSpan = c == '`' ? !inSpan : inSpan;
        if (c == '|' && !inSpan) {
            cells.push_back(Trim(cell));
            cell.clear();
        } else {
            cell += c;
        }
    }
    return cells;
}

} // namespace

std::vector<CodeBlock> CodeBlocks(std::string_view markdown) {
    std::vector<CodeBlock> blocks;
    bool inBlock = false;
    size_t number = 0;
    for (const std::string& line : Lines(markdown)) {
        ++number;
        if (inBlock) {
            if (IsFence(line)) {
                inBlock = false;
            } else {
                blocks.back().text += line + "\n";
            }
        } else if (IsFence(line)) {
            inBlock = true;
            std::istringstream words(line.substr(3));
            CodeBlock block{{}, {}, number};
            for (std::string word; words >> word;) {
                block.words.push_back(word);
            }
            blocks.push_back(block);
        }
    }
    return blocks;
}

std::vector<TextLine> TextLines(std::string_view markdown) {
    std::vector<TextLine> lines;
    bool inBlock = false;
    size_t number = 0;
    for (const std::string& line : Lines(markdown)) {
        ++number;
        if (IsFence(line)) {
            inBlock = !inBlock;
        } else if (!inBlock) {
            lines.push_back({number, line});
        }
    }
    return lines;
}

// Letters in lower case, blanks as hyphens; hyphens and underscores stay, other marks go.
std::vector<std::string> Anchors(std::string_view markdown) {
    std::vector<std::string> anchors;
    for (const TextLine& line : TextLines(markdown)) {
        if (!line.text.starts_with('#')) {
            continue;
        }
        std::string anchor;
        for (const char c : Trim(std::string_view(line.text).substr(line.text.find_first_not_of('#')))) {
            const auto byte = static_cast<unsigned char>(c);
            if (std::isalnum(byte) != 0) {
                anchor += static_cast<char>(std::tolower(byte));
            } else if (c == ' ' || c == '-') {
                anchor += '-';
            } else if (c == '_' || byte >= 0x80) {
                anchor += c;
            }
        }
        anchors.push_back(anchor);
    }
    return anchors;
}

std::vector<Row> Table(std::string_view markdown, std::string_view heading) {
    std::vector<Row> rows;
    bool below = false;
    for (const std::string& line : Lines(markdown)) {
        const bool isHeading = line.starts_with('#');
        if (isHeading && below) {
            break;
        }
        if (isHeading) {
            below = Trim(std::string_view(line).substr(line.find_first_not_of('#'))) == heading;
        } else if (below && line.starts_with('|')) {
            rows.push_back(SplitRow(line));
        } else if (!rows.empty()) {
            break;
        }
    }
    if (rows.size() < 3) { // the head, the line below it, and a row
        throw std::runtime_error("no table below the heading " + std::string(heading));
    }
    rows.erase(rows.begin(), rows.begin() + 2);
    return rows;
}

std::vector<std::string> Spans(std::string_view cell) {
    std::vector<std::string> spans;
    size_t open = cell.find('`');
    while (open != std::string_view::npos) {
        const size_t close = cell.find('`', open + 1);
        if (close == std::string_view::npos) {
            throw std::runtime_error("a code span without end in " + std::string(cell));
        }
        spans.emplace_back(cell.substr(open + 1, close - open - 1));
        open = cell.find('`', close + 1);
    }
    return spans;
}

std::string Span(std::string_view cell) {
    const std::vector<std::string> spans = Spans(cell);
    if (spans.empty() && cell == "empty") {
        return {};
    }
    if (spans.size() != 1) {
        throw std::runtime_error("not one code span in the cell " + std::string(cell));
    }
    return spans.front();
}

} // namespace docs
