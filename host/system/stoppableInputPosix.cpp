#include "system/stoppableInput.h"

#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "system/lastErrorPosix.h"
#include "system/stopHandlePosix.h"
#include "system/stopRequest.h"

namespace mordhost {

StoppableInput::~StoppableInput() {
    if (m_isOwn) {
        close(m_file);
    }
}

std::error_code StoppableInput::Open(const std::filesystem::path& path) {
    m_file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    m_isOwn = m_file >= 0;
    return m_isOwn ? std::error_code() : LastError();
}

void StoppableInput::TakeStandardInput() {
    m_file = STDIN_FILENO;
}

bool StoppableInput::IsRegular() const {
    struct stat status {};
    return fstat(m_file, &status) == 0 && S_ISREG(status.st_mode);
}

uint64_t StoppableInput::Size() const {
    struct stat status {};
    return fstat(m_file, &status) == 0 ? static_cast<uint64_t>(status.st_size) : 0;
}

size_t StoppableInput::Read(char* to, size_t size, std::error_code& error) {
    while (!StopRequested()) {
        pollfd handles[] = {{m_file, POLLIN, 0}, {StopHandle(), POLLIN, 0}};
        if (poll(handles, 2, -1) < 0 && errno != EINTR) {
            error = LastError();
            return 0;
        }
        if (handles[0].revents == 0) {
            continue;
        }
        const ssize_t length = read(m_file, to, size);
        if (length >= 0) {
            return static_cast<size_t>(length);
        }
        if (errno != EINTR && errno != EAGAIN) {
            error = LastError();
            return 0;
        }
    }
    return 0;
}

} // namespace mordhost
