#include "system/fileIdentity.h"

#include <string>

#include "system/handleWin32.h"
#include "system/streamHandleWin32.h"

namespace mordhost {

namespace {

constexpr DWORD longestPath = 32768;

// Opens the file to query its properties; never conflicts with other users of the file.
OwnedHandle OpenForProperties(const std::filesystem::path& path) {
    return Own(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                           nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

std::error_code GenericError(DWORD code) {
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
        return std::make_error_code(std::errc::no_such_file_or_directory);
    case ERROR_ACCESS_DENIED:
        return std::make_error_code(std::errc::permission_denied);
    default:
        return {static_cast<int>(code), std::system_category()};
    }
}

bool IdentifyHandle(HANDLE handle, FileIdentity& identity) {
    switch (GetFileType(handle)) {
    case FILE_TYPE_DISK:
        break;
    case FILE_TYPE_CHAR:
        identity = {FileIdentity::Kind::device, 0, 0, {}};
        return true;
    case FILE_TYPE_PIPE:
        identity = {FileIdentity::Kind::pipe, 0, 0, {}};
        return true;
    default:
        return false;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    if (!GetFileInformationByHandle(handle, &information)) {
        return false;
    }
    const bool isDirectory = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    identity = {isDirectory ? FileIdentity::Kind::directory : FileIdentity::Kind::regular,
                information.dwVolumeSerialNumber,
                static_cast<uint64_t>(information.nFileIndexHigh) << 32U | information.nFileIndexLow,
                {}};
    std::wstring name(longestPath, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(handle, name.data(), longestPath, VOLUME_NAME_DOS);
    if (length > 0 && length < longestPath) {
        name.resize(length);
        identity.place = name;
    }
    return true;
}

std::filesystem::path FullPath(const std::filesystem::path& path) {
    std::wstring full(longestPath, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), longestPath, full.data(), nullptr);
    full.resize(length < longestPath ? length : 0);
    return full.empty() ? path : std::filesystem::path(full);
}

bool IsSameName(const std::filesystem::path& one, const std::filesystem::path& other) {
    return CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

} // namespace

std::error_code Identify(const std::filesystem::path& path, FileIdentity& identity) {
    // Names such as NUL and COM1 are devices in every directory.
    const std::filesystem::path full = FullPath(path);
    if (full.native().starts_with(L"\\\\.\\")) {
        identity = {FileIdentity::Kind::device, 0, 0, full};
        return {};
    }
    const OwnedHandle file = OpenForProperties(full);
    const DWORD code = GetLastError();
    if (file) {
        const bool known = IdentifyHandle(file.get(), identity);
        if (identity.place.empty()) {
            identity.place = full;
        }
        return known ? std::error_code() : GenericError(GetLastError());
    }
    // A dangling link has attributes. There is no way to find its target.
    if (code != ERROR_FILE_NOT_FOUND || GetFileAttributesW(full.c_str()) != INVALID_FILE_ATTRIBUTES) {
        return GenericError(code);
    }
    const OwnedHandle directory = OpenForProperties(full.parent_path());
    if (!full.has_filename() || !directory || !IdentifyHandle(directory.get(), identity) ||
        identity.kind != FileIdentity::Kind::directory) {
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }
    identity.kind = FileIdentity::Kind::absent;
    identity.place = (identity.place.empty() ? full.parent_path() : identity.place) / full.filename();
    return {};
}

bool IsSameFile(const FileIdentity& one, const FileIdentity& other) {
    const bool absent = one.kind == FileIdentity::Kind::absent;
    if (absent != (other.kind == FileIdentity::Kind::absent) || one.volume != other.volume ||
        one.index != other.index) {
        return false;
    }
    if (one.index == 0) { // a volume without file indexes
        return IsSameName(one.place, other.place);
    }
    return !absent || IsSameName(one.place.filename(), other.place.filename());
}

std::optional<FileIdentity> Identify(Stream stream) {
    FileIdentity identity;
    return IdentifyHandle(HandleOf(stream), identity) ? std::optional(identity) : std::nullopt;
}

} // namespace mordhost
