#include "document/jsonPointer.h"

#include <algorithm>

namespace mordhost {

namespace {

// The last of `children`, which are in document order, that begins at `offset` or before; null if there is none.
template <typename Child>
const Child* LastBegunBy(const std::vector<Child>& children, size_t offset) {
    const auto next = std::upper_bound(children.begin(), children.end(), offset,
                                       [](size_t place, const Child& child) { return place < child.begin; });
    return next == children.begin() ? nullptr : &*std::prev(next);
}

// Goes to the child that has the byte at `offset`. Returns null if no child has it.
const JsonNode* Descend(const JsonNode& node, size_t offset, std::string& pointer) {
    if (const JsonMember* const member = LastBegunBy(node.members, offset)) {
        if (offset >= member->value.end) {
            return nullptr;
        }
        AppendToken(pointer, member->name);
        return &member->value;
    }
    const JsonNode* const element = LastBegunBy(node.elements, offset);
    if (element == nullptr || offset >= element->end) {
        return nullptr;
    }
    AppendToken(pointer, std::to_string(element - node.elements.data()));
    return element;
}

} // namespace

void AppendToken(std::string& pointer, std::string_view token) {
    pointer += '/';
    for (const char character : token) {
        switch (character) {
        case '~':
            pointer += "~0";
            break;
        case '/':
            pointer += "~1";
            break;
        default:
            pointer += character;
        }
    }
}

std::string PointerAt(const JsonNode& root, size_t offset) {
    std::string pointer;
    const JsonNode* node = &root;
    do {
        node = Descend(*node, offset, pointer);
    } while (node != nullptr);
    return pointer;
}

} // namespace mordhost
