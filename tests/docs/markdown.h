// As much of Markdown as the tests need: fenced code, tables and code spans.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace docs {

// A fenced block. The words after the fence are the language and the marks for the tests.
struct CodeBlock {
    std::vector<std::string> words;
    std::string text; // ends with a line feed, unless it is empty
    size_t line;      // of its fence, 1 is the first of the file

    // The word at `index`, or an empty one.
    std::string Word(size_t index) const { return index < words.size() ? words[index] : std::string(); }
};

std::vector<CodeBlock> CodeBlocks(std::string_view markdown);

// A line outside of fenced blocks.
struct TextLine {
    size_t number; // 1 is the first of the file
    std::string text;
};

std::vector<TextLine> TextLines(std::string_view markdown);

// The anchor of each heading, as links use it, in order.
std::vector<std::string> Anchors(std::string_view markdown);

// A row of a table: its cells without the blanks around them.
using Row = std::vector<std::string>;

// The rows, without the head, of the first table below the heading with this text. Throws std::runtime_error when there
// is no such heading or no table before the next one.
std::vector<Row> Table(std::string_view markdown, std::string_view heading);

// The texts of the code spans of a cell, in order.
std::vector<std::string> Spans(std::string_view cell);

// The text of the one code span of a cell; empty for the word "empty". Throws std::runtime_error for anything else.
std::string Span(std::string_view cell);

} // namespace docs
