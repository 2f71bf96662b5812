// ITextConverter: converts between UTF-8 and UTF-16.
#pragma once

#include "serviceObject.h"

namespace siblings {

// Stateless: any number of threads can share one object.
//
// Convert converts `sourceLength` characters of the source, including NULs, and writes the result and a NUL to the
// destination. It never writes beyond `destinationCapacity` and never splits a code point (its UTF-8 bytes or its
// surrogate pair). The output ends with a NUL unless the capacity is 0. Ill-formed text becomes U+FFFD (unicode.h).
// Source and destination must not overlap. `reserved` is ignored. A source can be null if its length is 0, a
// destination if its capacity is 0.
//
// Results: RESULT_OK; RESULT_TRUNCATED if the output is truncated, and always for a capacity of 0;
// RESULT_INVALID_ARGUMENT for a null request, an unknown command or a null destination (nothing is written), and for a
// code page other than 65001 or a null source (the output is empty).
class TextConverter final : public ServiceObject<TextConverter, ITextConverter> {
public:
    explicit TextConverter(const GUID& id = SID_TextConverter) : ServiceObject(id) {}

    int32_t Convert(uint32_t command, TextConversionRequest* request) override;

private:
    friend ServiceObject;
    ~TextConverter() = default;
};

} // namespace siblings
