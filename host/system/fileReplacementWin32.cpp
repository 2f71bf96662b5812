#include "system/fileReplacement.h"

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "system/handleWin32.h"
#include "system/lastErrorWin32.h"

namespace mordhost {

namespace {

// The owner, or the access list, of a file.
class Security {
public:
    static constexpr SECURITY_INFORMATION owners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;
    static constexpr SECURITY_INFORMATION rights = DACL_SECURITY_INFORMATION;

    // Stays empty on a volume without access lists.
    explicit Security(const std::filesystem::path& file, SECURITY_INFORMATION what) {
        DWORD size = 0;
        GetFileSecurityW(file.c_str(), what, nullptr, 0, &size);
        m_bytes.resize(size);
        if (size == 0 || !GetFileSecurityW(file.c_str(), what, Get(), size, &size)) {
            m_bytes.clear();
        }
    }

    bool IsKnown() const { return !m_bytes.empty(); }
    PSECURITY_DESCRIPTOR Get() { return m_bytes.data(); }
    bool operator==(const Security& other) const { return m_bytes == other.m_bytes; }

private:
    std::vector<unsigned char> m_bytes;
};

bool CopySecurity(const std::filesystem::path& from, const std::filesystem::path& to) {
    Security rights(from, Security::rights);
    if (rights.IsKnown() && !SetFileSecurityW(to.c_str(), Security::rights, rights.Get())) {
        return false;
    }
    Security owners(from, Security::owners);
    return owners == Security(to, Security::owners) || SetFileSecurityW(to.c_str(), Security::owners, owners.Get());
}

// Creates a file whose name is new and begins with `place`, and writes the name to `fresh`.
OwnedHandle MakeBeside(const std::filesystem::path& place, std::filesystem::path& fresh) {
    std::random_device random;
    HANDLE file = INVALID_HANDLE_VALUE;
    do {
        fresh = place;
        fresh += L".mordhost-" + std::to_wstring(random());
        file = CreateFileW(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    } while (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
    return Own(file);
}

std::error_code WriteAndFlush(HANDLE file, std::string_view text) {
    while (!text.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr)) {
            return LastError();
        }
        text.remove_prefix(written);
    }
    return FlushFileBuffers(file) ? std::error_code() : LastError();
}

// Copies the attributes that a user sets, and marks the file for backup.
std::error_code CopyAttributes(const std::filesystem::path& from, const std::filesystem::path& to) {
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const DWORD attributes = GetFileAttributesW(from.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES ||
        !SetFileAttributesW(to.c_str(), (attributes & kept) | FILE_ATTRIBUTE_ARCHIVE)) {
        return LastError();
    }
    return {};
}

std::error_code Fill(OwnedHandle handle, const FileIdentity& file, const std::filesystem::path& fresh,
                     std::string_view text) {
    const bool replaces = file.kind == FileIdentity::Kind::regular;
    // The access list first, because not every user may read the text.
    if (replaces && !CopySecurity(file.place, fresh)) {
        return LastError();
    }
    std::error_code error = WriteAndFlush(handle.get(), text);
    handle.reset();
    return error || !replaces ? error : CopyAttributes(file.place, fresh);
}

} // namespace

std::error_code ReplaceWhole(const FileIdentity& file, std::string_view text) {
    std::filesystem::path fresh;
    OwnedHandle handle = MakeBeside(file.place, fresh);
    if (!handle) {
        return LastError();
    }
    std::error_code error = Fill(std::move(handle), file, fresh, text);
    if (!error && !MoveFileExW(fresh.c_str(), file.place.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        error = LastError();
    }
    if (error) {
        DeleteFileW(fresh.c_str());
    }
    return error;
}

} // namespace mordhost
