#include "output/format.h"

namespace mordhost {

const std::initializer_list<NamedValue> formatNames = {
    {"text", static_cast<uint32_t>(OutputFormat::text)},
    {"json", static_cast<uint32_t>(OutputFormat::json)},
    {"jsonl", static_cast<uint32_t>(OutputFormat::jsonl)},
};

} // namespace mordhost
