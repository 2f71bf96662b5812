// The receiver's configuration of RapidJSON. The only header that includes RapidJSON; only .cpp files include it.
//
// Out of memory: RapidJSON passes on the null pointer of its default allocator without a check. Everything here uses an
// allocator that throws std::bad_alloc instead, which leaves the operation of the receiver. Documents and writers
// belong to one thread at a time; nothing here is logged.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "mordRev/src/inPlaceText.h"

// A base allocator, as RapidJSON defines it, that throws std::bad_alloc on failure. Any thread may use it.
class JsonAllocator {
public:
    static const bool kNeedFree = true;
    void* Malloc(size_t size);
    void* Realloc(void* memory, size_t oldSize, size_t newSize);
    static void Free(void* memory);
};

// Shared, since it has no state: RapidJSON would allocate one for each of its objects.
inline JsonAllocator jsonAllocator;

using JsonDocument =
    rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<JsonAllocator>, JsonAllocator>;
using JsonValue = JsonDocument::ValueType;
using JsonMember = JsonValue::Member;

// Parses the NUL-terminated `text` with the grammar of the default flags; only white space may surround the root value.
// Returns what a parse with those flags returns, including error code and offset, for every nesting depth: it uses the
// heap instead of the stack. The document copies its strings.
rapidjson::ParseResult ParseJson(JsonDocument& document, const char* text);

// Like ParseJson, but decodes the strings in place: `text`, `length` bytes and a NUL, is overwritten and must outlive
// the document.
rapidjson::ParseResult ParseJsonInPlace(JsonDocument& document, char* text, size_t length);

// Passes the parts of a text to `handler`, a RapidJSON reader handler, without building a document. The result is that
// of RapidJSON's parse. `stream` provides the memory of the strings that the handler gets.
template <unsigned flags, typename Stream, typename Handler>
rapidjson::ParseResult ReadJsonBy(Stream& stream, Handler& handler) {
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator> reader(&jsonAllocator);
    return reader.Parse<rapidjson::kParseDefaultFlags | rapidjson::kParseInsituFlag | flags>(stream, handler);
}

// For every nesting depth, like ParseJson.
template <typename Stream, typename Handler>
rapidjson::ParseResult ReadJson(Stream& stream, Handler& handler) {
    return ReadJsonBy<rapidjson::kParseIterativeFlag>(stream, handler);
}

// Faster: the parser recurses for each level. The handler must refuse objects and arrays that are nested too deep.
template <typename Stream, typename Handler>
rapidjson::ParseResult ReadShallowJson(Stream& stream, Handler& handler) {
    return ReadJsonBy<rapidjson::kParseNoFlags>(stream, handler);
}

// Returns the member of `object` with the name `name`, or null; null also if `object` is not an object. The first of
// several counts.
const JsonValue* FindMember(const JsonValue& object, const char* name);

// Returns the members of `value` in document order; an empty span if it is not an object. The document owns them.
std::span<const JsonMember> Members(const JsonValue& value);

// Returns the text of a string value or a member name, including NULs within it.
inline std::string WholeText(const JsonValue& string) {
    return {string.GetString(), string.GetStringLength()};
}

// Returns the text of a string value or a member name up to its first NUL.
inline std::string TextToNul(const JsonValue& string) {
    return string.GetString();
}

// Writes JSON in the format of RapidJSON's PrettyWriter. The text of an event with a few rules needs no heap memory.
// Not thread-safe.
class JsonText {
    using Pool = rapidjson::MemoryPoolAllocator<JsonAllocator>;
    using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, Pool>;

public:
    // RapidJSON's writer with a faster operation for texts. Its operations throw std::bad_alloc.
    class Writer : public rapidjson::PrettyWriter<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, Pool> {
    public:
        using PrettyWriter::PrettyWriter;

        // Writes a string as String does. A text without a character to escape is copied as a whole.
        void Text(std::string_view text) {
            if (SkipPlainText(text.data(), text.data() + text.size()) != text.data() + text.size()) {
                String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
                return;
            }
            PrettyPrefix(rapidjson::kStringType);
            char* const place = os_->Push(text.size() + 2);
            place[0] = '"';
            std::memcpy(place + 1, text.data(), text.size());
            place[text.size() + 1] = '"';
        }
    };

    JsonText() = default;
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

    Writer& Out() { return m_writer; }

    // The text written so far, NUL-terminated, and its size in bytes without the NUL. Valid until more is written.
    const char* Get() const { return m_buffer.GetString(); }
    size_t Size() const { return m_buffer.GetSize(); }

private:
    static constexpr size_t firstCapacity = 1024;
    static constexpr size_t levels = 2;
    static constexpr size_t chunkSize = 65536;

    // Room for the text, the writer's level stack and the pool's own headers.
    alignas(std::max_align_t) char m_first[firstCapacity + 256]; // NOLINT(cppcoreguidelines-pro-type-member-init)
    Pool m_pool{m_first, sizeof m_first - alignof(std::max_align_t), chunkSize, &jsonAllocator};
    Buffer m_buffer{&m_pool, firstCapacity};
    Writer m_writer{m_buffer, &m_pool, levels};
};
