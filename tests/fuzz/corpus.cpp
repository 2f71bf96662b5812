#include "fuzz/corpus.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>

#include <gtest/gtest.h>

#include "fuzz/inputRun.h"

std::vector<std::filesystem::path> CorpusFiles(const char* target) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(MORDREV_FUZZ_CORPUS) / target)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

InputBytes ReadInput(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    return {bytes.begin(), bytes.end()};
}

void ReplayCorpus(const char* target, FuzzTarget* run) {
    const auto files = CorpusFiles(target);
    EXPECT_GE(files.size(), 3U);
    for (const auto& file : files) {
        std::cout << target << " " << file.filename().string() << std::endl;
        const InputBytes input = ReadInput(file);
        RunInput(run, input.data(), input.size());
    }
}
