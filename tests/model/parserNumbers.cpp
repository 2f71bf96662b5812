#include "model/parserNumbers.h"

#include <rapidjson/document.h>

namespace model {

ParserNumbers NumbersOf(const std::string& text) {
    rapidjson::Document document;
    document.Parse(text.c_str());
    return {static_cast<unsigned>(document.GetParseError()), document.GetErrorOffset()};
}

} // namespace model
