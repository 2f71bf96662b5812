#include "mordRev/src/json.h"

#include <cstdlib>
#include <new>

void* JsonAllocator::Malloc(size_t size) {
    if (size == 0) {
        return nullptr;
    }
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* JsonAllocator::Realloc(void* memory, size_t, size_t newSize) {
    if (newSize == 0) {
        std::free(memory);
        return nullptr;
    }
    void* const moved = std::realloc(memory, newSize);
    if (moved == nullptr) {
        throw std::bad_alloc(); // the old block remains valid; its owner frees it
    }
    return moved;
}

void JsonAllocator::Free(void* memory) {
    std::free(memory);
}

namespace {

constexpr unsigned parseFlags = rapidjson::kParseDefaultFlags | rapidjson::kParseIterativeFlag;

// Returns the result of an iterative parse of `text` as RapidJSON's recursive parse would report it.
rapidjson::ParseResult ResultOf(const JsonDocument& document, const char* text) {
    const rapidjson::ParseResult result(document.GetParseError(), document.GetErrorOffset());
    // The iterative parse also reports an empty document if the first token cannot start a value; the recursive parse
    // reports an invalid value.
    if (result.Code() == rapidjson::kParseErrorDocumentEmpty && text[result.Offset()] != '\0') {
        return {rapidjson::kParseErrorValueInvalid, result.Offset()};
    }
    return result;
}

} // namespace

rapidjson::ParseResult ParseJson(JsonDocument& document, const char* text) {
    document.Parse<parseFlags>(text);
    return ResultOf(document, text);
}

rapidjson::ParseResult ParseJsonInPlace(JsonDocument& document, char* text, size_t length) {
    InPlaceText stream(text, length);
    document.ParseStream<parseFlags | rapidjson::kParseInsituFlag>(stream);
    return ResultOf(document, text); // the parse leaves an invalid first token unchanged
}

const JsonValue* FindMember(const JsonValue& object, const char* name) {
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto member = object.FindMember(name);
    return member == object.MemberEnd() ? nullptr : &member->value;
}

std::span<const JsonMember> Members(const JsonValue& value) {
    if (!value.IsObject() || value.ObjectEmpty()) {
        return {};
    }
    return {&*value.MemberBegin(), value.MemberCount()};
}
