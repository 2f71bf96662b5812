// RapidJSON as the receiver uses it. The one header that includes RapidJSON; only .cpp files include it.
//
// Exhausted memory: RapidJSON's own base allocator hands a null pointer on, which nothing tests. Everything here rests
// on one that throws std::bad_alloc instead, which passes out of the operation.
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

// Base allocator whose failure is std::bad_alloc.
class JsonAllocator {
public:
    static const bool kNeedFree = true;
    void* Malloc(size_t size);
    void* Realloc(void* memory, size_t oldSize, size_t newSize);
    static void Free(void* memory);
};

// It has no state, and so one serves all: RapidJSON would allocate one for each of its objects.
inline JsonAllocator jsonAllocator;

using JsonDocument =
    rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<JsonAllocator>, JsonAllocator>;
using JsonValue = JsonDocument::ValueType;
using JsonMember = JsonValue::Member;

// Parses NUL-ended text with the default flags' grammar; white space alone may stand around the root value. Returns
// what a parse with those flags returns, error code and offset included, at any depth of nesting: the parse uses the
// heap and not the stack.
rapidjson::ParseResult ParseJson(JsonDocument& document, const char* text);

// The same, with the text of strings left where it stands: `text` must outlive the document, and is destroyed.
rapidjson::ParseResult ParseJsonInPlace(JsonDocument& document, char* text, size_t length);

// Has `handler` take the parts of a text as the parser comes across them, without a document. The texts that the
// handler gets stay where the stream has put them.
template <unsigned flags, typename Stream, typename Handler>
rapidjson::ParseResult ReadJsonBy(Stream& stream, Handler& handler) {
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator> reader(&jsonAllocator);
    return reader.Parse<rapidjson::kParseDefaultFlags | rapidjson::kParseInsituFlag | flags>(stream, handler);
}

// At any depth of nesting, as ParseJson.
template <typename Stream, typename Handler>
rapidjson::ParseResult ReadJson(Stream& stream, Handler& handler) {
    return ReadJsonBy<rapidjson::kParseIterativeFlag>(stream, handler);
}

// Faster: the parser calls itself for each level. The handler must refuse an object or array that is nested too deep.
template <typename Stream, typename Handler>
rapidjson::ParseResult ReadShallowJson(Stream& stream, Handler& handler) {
    return ReadJsonBy<rapidjson::kParseNoFlags>(stream, handler);
}

// The member of `object` with the name `name`, or null: also when it is no object.
const JsonValue* FindMember(const JsonValue& object, const char* name);

// The members of `value` in document order; none when it is no object.
std::span<const JsonMember> Members(const JsonValue& value);

// The text of a string value or a member's name, whole.
inline std::string WholeText(const JsonValue& string) {
    return {string.GetString(), string.GetStringLength()};
}

// The same up to its first NUL.
inline std::string TextToNul(const JsonValue& string) {
    return string.GetString();
}

// JSON in the pretty format, as it is written. A text of an event with a few rules takes no memory from the heap.
class JsonText {
    using Pool = rapidjson::MemoryPoolAllocator<JsonAllocator>;
    using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, Pool>;

public:
    // RapidJSON's writer, and a faster way for texts.
    class Writer : public rapidjson::PrettyWriter<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, Pool> {
    public:
        using PrettyWriter::PrettyWriter;

        // A string, as String writes it; without a character that must be escaped, it goes in as a whole.
        void Text(std::string_view text) {
            if (PassPlainText(text.data(), text.data() + text.size()) != text.data() + text.size()) {
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

    // The text so far, NUL-ended. Good until more is written.
    const char* Get() const { return m_buffer.GetString(); }
    size_t Size() const { return m_buffer.GetSize(); }

private:
    static constexpr size_t firstCapacity = 1024;
    static constexpr size_t levels = 2;
    static constexpr size_t chunkSize = 65536;

    // Room for the text, for the writer's levels and for what the pool keeps in front of them.
    alignas(std::max_align_t) char m_first[firstCapacity + 256]; // NOLINT(cppcoreguidelines-pro-type-member-init)
    Pool m_pool{m_first, sizeof m_first - alignof(std::max_align_t), chunkSize, &jsonAllocator};
    Buffer m_buffer{&m_pool, firstCapacity};
    Writer m_writer{m_buffer, &m_pool, levels};
};
