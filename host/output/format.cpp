#include "output/format.h"

namespace mordhost {

namespace {

constexpr uint32_t Value(OutputFormat format) {
    return static_cast<uint32_t>(format);
}

} // namespace

const std::initializer_list<NamedValue> formatNames = {
    {"text", Value(OutputFormat::text)},
    {"json", Value(OutputFormat::json)},
    {"jsonl", Value(OutputFormat::jsonl)},
};

const std::initializer_list<NamedValue> findingFormatNames = {
    {"text", Value(OutputFormat::text)},     {"json", Value(OutputFormat::json)}, {"jsonl", Value(OutputFormat::jsonl)},
    {"junit", Value(OutputFormat::junit)},   {"tap", Value(OutputFormat::tap)},   {"sarif", Value(OutputFormat::sarif)},
    {"github", Value(OutputFormat::github)},
};

} // namespace mordhost
