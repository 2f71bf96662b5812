// ITextConverter: UTF-8 to UTF-16 and back.
#pragma once

#include "serviceObject.h"

namespace siblings {

// Has no state: any number of threads may share one object.
//
// Convert takes `sourceLength` characters of the source, NULs among them like any other, and writes what they give, and
// a NUL, to the destination. It never writes beyond `destinationCapacity`, never splits a character (neither the bytes
// of UTF-8 nor a surrogate pair), and ends what it wrote with a NUL whenever the capacity is not 0. Ill-formed text
// becomes U+FFFD (unicode.h). Source and destination must not overlap. `reserved` plays no part. A source may be null
// if its length is 0, a destination if its capacity is.
//
// Results: RESULT_OK; RESULT_CUT when the output was cut for want of room, which a capacity of 0 always is;
// RESULT_INVALID_ARGUMENT for a null request, an unknown command, or a null pointer where text is told (nothing is
// written), and for another code page than 65001 or a null source (the output is the empty text).
class TextConverter final : public ServiceObject<TextConverter, ITextConverter> {
public:
    explicit TextConverter(const GUID& id = SID_TextConverter) : ServiceObject(id) {}

    int32_t Convert(uint32_t command, TextConversionRequest* request) override;

private:
    friend ServiceObject;
    ~TextConverter() = default;
};

} // namespace siblings
