// The files that are generated from the option table.
#pragma once

#include <string>
#include <vector>

namespace mordhost {

struct GeneratedPage {
    std::string file; // relative to the folder host
    std::string text;
};

// `host` is that folder, which holds the page without the generated parts. Throws FileError if it cannot be read.
std::vector<GeneratedPage> GeneratedPages(const std::string& host);

} // namespace mordhost
