// The kept inputs of the fuzzed targets.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "fuzz/targets.h"

using InputBytes = std::vector<uint8_t>; // of the input's exact size: AddressSanitizer finds a read past the end

// The files of tests/fuzz/corpus/`target`, by name.
std::vector<std::filesystem::path> CorpusFiles(const char* target);

InputBytes ReadInput(const std::filesystem::path& file);

// Runs every kept input. If a process ends half-way, the last file on the output is the reason. Fails for a corpus of
// fewer than three files.
void ReplayCorpus(const char* target, FuzzTarget* run);
