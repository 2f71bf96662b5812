#include "fuzz/corpusReplay.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

void ReplayCorpus(const char* target, void (*run)(const uint8_t* data, size_t size)) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(MORDREV_FUZZ_CORPUS) / target)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    EXPECT_GE(files.size(), 3U);
    for (const auto& file : files) {
        std::cout << target << " " << file.filename().string() << std::endl;
        std::ifstream stream(file, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        // In a buffer of its own size: a read past the end is found.
        const std::vector<uint8_t> input(bytes.begin(), bytes.end());
        run(input.data(), input.size());
    }
}
