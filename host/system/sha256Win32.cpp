#include "system/sha256.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

#include <windows.h>

#include <bcrypt.h>

#include "system/hexText.h"
#include "system/runError.h"

namespace mordhost {

namespace {

void Require(NTSTATUS status) {
    if (status < 0) {
        throw RunError("SHA-256 is not available");
    }
}

struct CloseAlgorithm {
    void operator()(void* algorithm) const { BCryptCloseAlgorithmProvider(algorithm, 0); }
};
struct DestroyHash {
    void operator()(void* hash) const { BCryptDestroyHash(hash); }
};

} // namespace

std::string Sha256Of(std::string_view bytes) {
    BCRYPT_ALG_HANDLE opened = nullptr;
    Require(BCryptOpenAlgorithmProvider(&opened, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    const std::unique_ptr<void, CloseAlgorithm> algorithm(opened);
    BCRYPT_HASH_HANDLE created = nullptr;
    Require(BCryptCreateHash(algorithm.get(), &created, nullptr, 0, nullptr, 0, 0));
    const std::unique_ptr<void, DestroyHash> hash(created);
    while (!bytes.empty()) {
        const size_t size = std::min<size_t>(bytes.size(), std::numeric_limits<ULONG>::max());
        // The parameter is not const, but the function only reads the bytes.
        auto* const data = reinterpret_cast<PUCHAR>(const_cast<char*>(bytes.data()));
        Require(BCryptHashData(hash.get(), data, static_cast<ULONG>(size), 0));
        bytes.remove_prefix(size);
    }
    std::array<uint8_t, 32> digest{};
    Require(BCryptFinishHash(hash.get(), digest.data(), static_cast<ULONG>(digest.size()), 0));
    return HexText(digest);
}

} // namespace mordhost
