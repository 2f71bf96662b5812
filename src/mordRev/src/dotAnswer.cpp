#include "mordRev/src/dotAnswer.h"

#include <cstring>

std::string DotAnswer::Copy() const {
    return {m_text, std::strlen(m_text)};
}
