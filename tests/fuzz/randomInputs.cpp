#include "fuzz/randomInputs.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/corpus.h"
#include "fuzz/inputRun.h"

namespace {

uint64_t Setting(const char* name, uint64_t otherwise) {
    const char* const text = std::getenv(name);
    if (text == nullptr || *text == '\0') {
        return otherwise;
    }
    char* end = nullptr;
    const uint64_t value = std::strtoull(text, &end, 10);
    EXPECT_EQ(*end, '\0') << name << " is not a number: " << text;
    return value;
}

class RandomInputs {
public:
    RandomInputs(uint64_t seed, std::vector<InputBytes> kept) : m_engine(seed), m_kept(std::move(kept)) {}

    InputBytes Next() { return Below(2) == 0 ? RandomBytes() : ChangedInput(); }

private:
    static constexpr size_t mostRandomBytes = 300;
    static constexpr size_t mostChanges = 6;

    size_t Below(size_t bound) { return static_cast<size_t>(m_engine() % bound); }
    uint8_t Byte() { return static_cast<uint8_t>(m_engine()); }

    InputBytes RandomBytes() {
        InputBytes input(Below(mostRandomBytes));
        std::generate(input.begin(), input.end(), [this] { return Byte(); });
        return input;
    }

    InputBytes ChangedInput() {
        InputBytes input = m_kept[Below(m_kept.size())];
        for (size_t changes = Below(mostChanges); changes > 0; --changes) {
            Change(input);
        }
        return input;
    }

    void Change(InputBytes& input) {
        const auto place = input.begin() + static_cast<std::ptrdiff_t>(Below(input.size() + 1));
        switch (Below(4)) {
        case 0:
            input.insert(place, Byte());
            break;
        case 1:
            input.erase(place, input.end());
            break;
        case 2: {
            const InputBytes& other = m_kept[Below(m_kept.size())];
            input.insert(input.end(), other.begin(), other.end());
            break;
        }
        default:
            if (place != input.end()) {
                *place = Byte();
            }
        }
    }

    std::mt19937_64 m_engine;
    std::vector<InputBytes> m_kept;
};

// Holds the input that runs. The file remains only if the process ends before the object does. It stays open, because
// opening it anew for each input takes longer than the input.
class InputFile {
public:
    explicit InputFile(std::filesystem::path path)
        : m_path(std::move(path)), m_stream(m_path, std::ios::binary | std::ios::trunc) {}
    ~InputFile() {
        m_stream.close();
        std::filesystem::remove(m_path);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    void Write(const InputBytes& input) {
        m_stream.seekp(0);
        std::copy(input.begin(), input.end(), std::ostreambuf_iterator<char>(m_stream));
        m_stream.flush();
        if (input.size() < m_size) {
            std::filesystem::resize_file(m_path, input.size());
        }
        m_size = input.size();
        ASSERT_TRUE(m_stream) << "cannot write " << m_path;
    }

private:
    const std::filesystem::path m_path;
    std::ofstream m_stream;
    size_t m_size = 0;
};

} // namespace

void RunRandomInputs(const char* name, const char* corpus, FuzzTarget* run, uint64_t count) {
    const uint64_t seed = Setting("MORDREV_FUZZ_SEED", std::random_device()());
    count = Setting("MORDREV_FUZZ_INPUTS", count);
    const auto path = std::filesystem::current_path() / (std::string("failedInput-") + name);
    std::cout << count << " random inputs, MORDREV_FUZZ_SEED=" << seed << ", a failed input is in " << path.string()
              << std::endl;

    std::vector<InputBytes> kept;
    for (const auto& each : CorpusFiles(corpus)) {
        kept.push_back(ReadInput(each));
    }
    ASSERT_FALSE(kept.empty());
    RandomInputs inputs(seed, std::move(kept));
    InputFile file(path);
    for (uint64_t i = 0; i < count; ++i) {
        const InputBytes input = inputs.Next();
        ASSERT_NO_FATAL_FAILURE(file.Write(input));
        RunInput(run, input.data(), input.size());
    }
}
