#include "usage/fileRecording.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "system/fileError.h"
#include "system/filePath.h"
#include "system/runError.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

constexpr auto standardInput = "-";

std::unique_ptr<InputStream> OpenInput(const std::string& name) {
    return name == standardInput ? std::make_unique<InputStream>(InputStream::Standard())
                                 : std::make_unique<InputStream>(name);
}

} // namespace

FileRecording::FileRecording(const std::vector<std::string>& names, Use use) : m_use(use) {
    for (const std::string& name : names) {
        m_files.push_back({name == standardInput ? "standard input" : name, name});
    }
    if (std::count(names.begin(), names.end(), standardInput) > 1) {
        throw FileError("the standard input can be read only once");
    }
}

void FileRecording::Rewind() {
    m_current = 0;
    m_done = 0;
    Open();
}

void FileRecording::Open() {
    Input& file = m_files[m_current];
    m_reader.reset();
    m_input.reset();
    m_input = OpenInput(file.opened);
    // A standard input that is a regular file does not start again either.
    if (m_use == Use::repeated && (file.opened == standardInput || !m_input->IsRegular())) {
        m_input = Copy(*m_input, file);
    }
    m_reader = std::make_unique<EventReader>(m_input->Stream(), file.shown);
}

std::unique_ptr<InputStream> FileRecording::Copy(InputStream& input, Input& file) {
    const std::filesystem::path path = m_copies.NewPath();
    std::ofstream copy(path, std::ios::binary);
    std::vector<char> block(65536);
    std::istream& stream = input.Stream();
    while (stream.read(block.data(), static_cast<std::streamsize>(block.size())), stream.gcount() > 0) {
        copy.write(block.data(), stream.gcount());
    }
    copy.close();
    if (!copy) {
        throw RunError("cannot copy " + file.shown + " to " + Utf8Of(path) + ": output is lost");
    }
    file.opened = Utf8Of(path);
    return OpenInput(file.opened);
}

bool FileRecording::Next(ConnectionEvent& event) {
    if (StopRequested()) {
        throw Stopped("interrupted by " + StopCause());
    }
    while (!m_reader->Next(event)) {
        if (m_current + 1 == m_files.size()) {
            return false;
        }
        m_done += m_input->Done();
        ++m_current;
        Open();
    }
    return true;
}

uint64_t FileRecording::Size() const {
    uint64_t size = 0;
    for (const Input& file : m_files) {
        std::error_code error;
        const uint64_t more = file.opened == standardInput ? 0 : std::filesystem::file_size(PathOf(file.opened), error);
        if (error || more == 0) {
            return 0;
        }
        size += more;
    }
    return size;
}

} // namespace mordhost
