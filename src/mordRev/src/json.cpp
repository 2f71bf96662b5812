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
        throw std::bad_alloc(); // the old block stays, and its owner frees it
    }
    return moved;
}

void JsonAllocator::Free(void* memory) {
    std::free(memory);
}

rapidjson::ParseResult ParseJson(JsonDocument& document, const char* text) {
    document.Parse<rapidjson::kParseDefaultFlags | rapidjson::kParseIterativeFlag>(text);
    const rapidjson::ParseResult result(document.GetParseError(), document.GetErrorOffset());
    // The iterative parse calls a document empty too when its first token begins no value; the default one does not.
    if (result.Code() == rapidjson::kParseErrorDocumentEmpty && text[result.Offset()] != '\0') {
        return {rapidjson::kParseErrorValueInvalid, result.Offset()};
    }
    return result;
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
