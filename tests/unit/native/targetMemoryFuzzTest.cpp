// The fuzzer over memory of targets, without a fuzzing engine: every kept input, and a bounded number of random ones.
//
//     MORDREV_FUZZ_INPUTS=1000000 MORDREV_FUZZ_SEED=7 build/linux-asan/tests/targetMemoryFuzz32Test
//
// runs more of them, and others. The input at which a program ended is left in the current folder, see InputFile.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Input = std::vector<uint8_t>;

std::vector<Input> KeptInputs() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(MORDREV_FUZZ_CORPUS)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<Input> inputs;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        inputs.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return inputs;
}

// Holds the input that runs, and goes with the object: what is found afterwards is the one at which the program ended.
class InputFile {
public:
    InputFile() : m_file(std::fopen(MORDREV_FUZZ_INPUT_FILE, "wb")) {
        if (m_file == nullptr) {
            throw std::runtime_error("no file for inputs");
        }
    }
    ~InputFile() {
        std::fclose(m_file);
        std::filesystem::remove(MORDREV_FUZZ_INPUT_FILE);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    void Run(const Input& input) {
        std::rewind(m_file);
        const bool kept = std::fwrite(input.data(), 1, input.size(), m_file) == input.size() &&
                          std::fflush(m_file) == 0 && ftruncate(fileno(m_file), static_cast<off_t>(input.size())) == 0;
        if (!kept) {
            throw std::runtime_error("the input could not be kept");
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }

private:
    std::FILE* m_file;
};

uint64_t FromEnvironment(const char* name, uint64_t otherwise) {
    const char* const value = std::getenv(name);
    return value == nullptr ? otherwise : std::strtoull(value, nullptr, 10);
}

// Inputs of nothing but chance, and kept ones with changes.
class RandomInputs {
public:
    RandomInputs(uint64_t seed, std::vector<Input> kept) : m_engine(seed), m_kept(std::move(kept)) {}

    Input Next() {
        Input input;
        if (Below(2) == 0 || m_kept.empty()) {
            input.resize(Below(300));
            std::generate(input.begin(), input.end(), [this] { return Byte(); });
            return input;
        }
        input = m_kept[Below(m_kept.size())];
        for (uint64_t changes = Below(6); changes > 0; --changes) {
            const auto place = static_cast<std::ptrdiff_t>(Below(input.size() + 1));
            switch (Below(4)) {
            case 0:
                input.insert(input.begin() + place, Byte());
                break;
            case 1:
                input.erase(input.begin() + place, input.end());
                break;
            case 2: {
                const Input& other = m_kept[Below(m_kept.size())];
                input.insert(input.end(), other.begin(), other.end());
                break;
            }
            default:
                if (place < std::ssize(input)) {
                    input[static_cast<size_t>(place)] = Byte();
                }
            }
        }
        return input;
    }

private:
    uint64_t Below(uint64_t bound) { return m_engine() % bound; }
    uint8_t Byte() { return static_cast<uint8_t>(m_engine()); }

    std::mt19937_64 m_engine;
    std::vector<Input> m_kept;
};

TEST(TargetMemoryFuzz, EveryKeptInputPasses) {
    const auto inputs = KeptInputs();
    ASSERT_FALSE(inputs.empty());
    InputFile file;
    for (const Input& input : inputs) {
        file.Run(input);
    }
}

TEST(TargetMemoryFuzz, ABoundedNumberOfRandomInputsPasses) {
    const uint64_t seed = FromEnvironment("MORDREV_FUZZ_SEED", 1);
    RandomInputs inputs(seed, KeptInputs());
    InputFile file;
    for (uint64_t count = FromEnvironment("MORDREV_FUZZ_INPUTS", 5000); count > 0; --count) {
        file.Run(inputs.Next());
    }
}

} // namespace
