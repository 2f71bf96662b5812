#include "fuzz/receiver/inputRecord.h"

#include <algorithm>
#include <limits>

#include "frame/values.h"
#include "fuzz/receiver/vocabulary.h"

namespace {

// Answers to the first call for a text. An input that has ended gives the first of them.
enum class TextKind : uint8_t {
    Word,
    Bytes,
    Absent,
    NoSize,
    HugeSize,
    WithoutNul,
    SecondFails,
    SizeChanges,
    WritesNothing,
    MoreRoomThanText,
    Count
};

constexpr int32_t noSuchValue = 2;

// A result code other than `success`, also one that a caller could mistake for it.
int32_t TakeFailure(FuzzInput& input, int32_t success) {
    const auto result = static_cast<int32_t>(input.Take<int8_t>());
    return result == success ? noSuchValue : result;
}

template <typename Number>
int32_t AnswerNumber(FuzzInput& input, Number* value) {
    const auto kind = input.Take<uint8_t>();
    switch (kind % 8) {
    case 0: // left alone
        return RECORD_DELIVERED;
    case 1:
        return TakeFailure(input, RECORD_DELIVERED);
    case 2:
        *value = input.Take<Number>();
        return TakeFailure(input, RECORD_DELIVERED);
    case 3:
        *value = std::numeric_limits<Number>::min();
        return RECORD_DELIVERED;
    case 4:
        *value = input.Take<Number>();
        return RECORD_DELIVERED;
    default:
        *value = static_cast<Number>(input.Take<int8_t>());
        return RECORD_DELIVERED;
    }
}

} // namespace

int32_t InputRecord::GetInt32(const char* name, int32_t* value) {
    m_side.Log(m_name, name);
    m_side.Log("i", *value);
    return AnswerNumber(m_side.m_input, value);
}

int32_t InputRecord::GetInt64(const char* name, int64_t* value) {
    m_side.Log(m_name, name);
    m_side.Log("l", *value);
    return AnswerNumber(m_side.m_input, value);
}

int32_t InputRecord::GetString(const char* name, char* buffer, int32_t* size) {
    if (buffer == nullptr) {
        m_side.Log(m_name, name);
        m_side.Log("s", *size);
        return AnswerSize(size);
    }
    return AnswerText(buffer, size);
}

// One of the words. A quarter of the bytes adds the name of the record, so that each rule has a different text.
std::string InputRecord::TakeWord(FuzzInput& input) const {
    const size_t index = input.Take<uint8_t>();
    std::string word(Word(index));
    return index < 0xC0 ? word : word + m_name;
}

int32_t InputRecord::AnswerSize(int32_t* size) {
    FuzzInput& input = m_side.m_input;
    m_result = RECORD_DELIVERED;
    m_changesSize = false;
    size_t room = 0;
    switch (static_cast<TextKind>(input.Take<uint8_t>() % static_cast<uint8_t>(TextKind::Count))) {
    case TextKind::Absent:
        *size = input.Take<int32_t>();
        return TakeFailure(input, RECORD_BUFFER_NEEDED);
    case TextKind::NoSize:
        *size = -static_cast<int32_t>(input.Take<uint32_t>() & 0x7FFFFFFF);
        return RECORD_BUFFER_NEEDED;
    case TextKind::HugeSize:
        *size = static_cast<int32_t>(input.Take<uint32_t>() >> 4 | 0x70000000);
        m_text.clear();
        m_result = noSuchValue; // if there is so much memory
        return m_side.m_ofModel ? noSuchValue : RECORD_BUFFER_NEEDED;
    case TextKind::Word:
        m_text = TakeWord(input);
        m_text += '\0';
        break;
    case TextKind::WithoutNul:
        m_text = input.TakeBytes(40) + 'x';
        break;
    case TextKind::SecondFails:
        m_text = input.TakeBytes(40) + '\0';
        m_result = TakeFailure(input, RECORD_DELIVERED);
        break;
    case TextKind::SizeChanges:
        m_text = input.TakeBytes(40) + '\0';
        m_changesSize = true;
        m_newSize = input.Take<int32_t>();
        break;
    case TextKind::WritesNothing:
        m_text.clear();
        room = input.Take<uint8_t>() + 1U;
        break;
    case TextKind::MoreRoomThanText:
        m_text = input.TakeBytes(40) + '\0' + input.TakeBytes(8);
        room = input.Take<uint16_t>();
        break;
    default:
        m_text = input.TakeBytes(200) + '\0';
        break;
    }
    *size = static_cast<int32_t>(m_text.size() + room);
    return RECORD_BUFFER_NEEDED;
}

int32_t InputRecord::AnswerText(char* buffer, int32_t* size) {
    std::copy(m_text.begin(), m_text.end(), buffer);
    if (m_changesSize) {
        *size = m_newSize;
    }
    return m_result;
}
