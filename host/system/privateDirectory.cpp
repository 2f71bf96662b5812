#include "system/privateDirectory.h"

#include <random>
#include <string>
#include <system_error>

#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/runError.h"

namespace mordhost {

namespace {

constexpr int mostAttempts = 100;

[[noreturn]] void Refuse(const TemporaryPlace& place, const std::string& reason) {
    throw RunError("cannot make a directory for the log records in " + Utf8Of(place.path) + ": " + reason + "; set " +
                   place.variable + " to a directory that can be written");
}

} // namespace

std::filesystem::path MakePrivateDirectory() {
    const TemporaryPlace parent = FindTemporaryPlace();
    std::error_code error;
    if (!std::filesystem::exists(parent.path, error)) {
        Refuse(parent, error ? error.message() : "it does not exist");
    }
    if (!std::filesystem::is_directory(parent.path, error)) {
        Refuse(parent, "it is not a directory");
    }
    std::random_device random;
    for (int attempt = 0; attempt < mostAttempts && !error; ++attempt) {
        const std::filesystem::path directory = parent.path / ("mordhost-" + std::to_string(random()));
        if (std::filesystem::create_directory(directory, error)) {
            std::filesystem::permissions(directory, std::filesystem::perms::owner_all, error);
            return directory;
        }
    }
    Refuse(parent, error ? error.message() : "it is full of such directories");
}

} // namespace mordhost
