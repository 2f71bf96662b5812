// Values as bytes, for the pipe between two processes of this program on one machine.
#pragma once

#include <concepts>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "system/runError.h"

namespace mordhost {

class ByteWriter {
public:
    // Appends to `out`, which is not owned.
    explicit ByteWriter(std::string& out) : m_out(out) {}

    template <std::integral Number>
    void Put(Number number) {
        char bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        m_out.append(bytes, sizeof number);
    }

    void Put(std::string_view text) {
        Put(static_cast<uint32_t>(text.size()));
        m_out += text;
    }

    template <typename Held>
    void Put(const std::optional<Held>& value) {
        Put(static_cast<uint8_t>(value ? 1 : 0));
        if (value) {
            Put(*value);
        }
    }

private:
    std::string& m_out;
};

// All functions throw RunError at the end of the bytes.
class ByteReader {
public:
    // Refers to `bytes`.
    explicit ByteReader(std::string_view bytes) : m_rest(bytes) {}

    bool IsAtEnd() const { return m_rest.empty(); }

    template <std::integral Number>
    Number Get() {
        Number number = 0;
        std::memcpy(&number, Cut(sizeof number).data(), sizeof number);
        return number;
    }

    // Valid as long as the bytes.
    std::string_view Text() { return Cut(Get<uint32_t>()); }

    template <std::integral Number>
    void GetInto(std::optional<Number>& value) {
        value = Get<uint8_t>() == 0 ? std::nullopt : std::optional(Get<Number>());
    }

    // Keeps the memory of a text that is there.
    void GetInto(std::optional<std::string>& value) {
        if (Get<uint8_t>() == 0) {
            value.reset();
        } else if (value) {
            value->assign(Text());
        } else {
            value.emplace(Text());
        }
    }

private:
    std::string_view Cut(size_t size) {
        if (size > m_rest.size()) {
            throw RunError("the other process of mordhost sent an incomplete message");
        }
        const std::string_view cut = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return cut;
    }

    std::string_view m_rest;
};

} // namespace mordhost
