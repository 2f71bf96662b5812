#include "system/fileReplacement.h"

#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

namespace mordhost {

namespace {

std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedFile = std::unique_ptr<void, HandleCloser>;

// The owner and the rights of a file.
class Security {
public:
    static constexpr SECURITY_INFORMATION owners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;
    static constexpr SECURITY_INFORMATION rights = DACL_SECURITY_INFORMATION;

    // Has nothing where the volume has no rights.
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

// Makes a file of a name that no file had, which begins with `place`.
OwnedFile MakeBeside(const std::filesystem::path& place, std::filesystem::path& fresh) {
    std::random_device random;
    HANDLE file = INVALID_HANDLE_VALUE;
    do {
        fresh = place;
        fresh += L".mordhost-" + std::to_wstring(random());
        file = CreateFileW(fresh.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    } while (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
    return OwnedFile(file == INVALID_HANDLE_VALUE ? nullptr : file);
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

// What a user sets, and what says that the file is to be saved.
std::error_code CopyAttributes(const std::filesystem::path& from, const std::filesystem::path& to) {
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const DWORD attributes = GetFileAttributesW(from.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES ||
        !SetFileAttributesW(to.c_str(), (attributes & kept) | FILE_ATTRIBUTE_ARCHIVE)) {
        return LastError();
    }
    return {};
}

std::error_code Fill(OwnedFile handle, const FileIdentity& file, const std::filesystem::path& fresh,
                     std::string_view text) {
    const bool replaces = file.kind == FileIdentity::Kind::regular;
    // The rights come before the text, which not everybody may read.
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
    OwnedFile handle = MakeBeside(file.place, fresh);
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
