// What is special about a document, counted as branches are: that a case took a rare kind of text into its stride.
#pragma once

#include <optional>
#include <string_view>

#include "model/branches.h"
#include "model/jsonReader.h"

namespace model {

enum class DocumentKind { List, Actions, Answer };

// `root` is what was read from `text`; nothing when it was refused.
void CountTraits(DocumentKind kind, std::string_view text, const std::optional<JsonValue>& root,
                 BranchCounts& branches);

// Whether every byte of `text` belongs to a character of UTF-8.
bool IsUtf8(std::string_view text);

} // namespace model
