#include "system/sha256.h"

#include <array>

#include <openssl/evp.h>

#include "system/hexText.h"
#include "system/runError.h"

namespace mordhost {

std::string Sha256Of(std::string_view bytes) {
    std::array<uint8_t, 32> digest{};
    if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
        throw RunError("SHA-256 is not available");
    }
    return HexText(digest);
}

} // namespace mordhost
