// A JSON document: its text and its tree.
#pragma once

#include <string>

#include "document/jsonNode.h"
#include "document/sourceText.h"

namespace mordhost {

// Where a value is in its file.
struct DocumentPlace {
    Location where;
    size_t offset = 0;   // of its first byte in the file
    std::string pointer; // JSON pointer (RFC 6901) to the value from the root of the file
};

class JsonDocument {
public:
    // Parses the text. Throws DocumentError as ParseJson does.
    explicit JsonDocument(SourceText source) : m_source(std::move(source)), m_root(ParseJson(m_source)) {}

    const SourceText& Source() const { return m_source; }
    const JsonNode& Root() const { return m_root; }

    // `root` is the tree of the source.
    JsonDocument(SourceText source, JsonNode root) : m_source(std::move(source)), m_root(std::move(root)) {}

    // The place of the value whose source, or whose member name, has the byte at `offset`.
    DocumentPlace PlaceAt(size_t offset) const;

private:
    SourceText m_source;
    JsonNode m_root;
};

} // namespace mordhost
