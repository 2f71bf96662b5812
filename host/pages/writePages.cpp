// Writes the generated pages into the tree: writePages HOST-FOLDER
#include <exception>
#include <iostream>

#include "pages/generatedPages.h"
#include "system/replaceFile.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: writePages HOST-FOLDER\n";
        return 2;
    }
    try {
        const std::string host = argv[1];
        for (const mordhost::GeneratedPage& page : mordhost::GeneratedPages(host)) {
            mordhost::ReplaceWholeFile(host + '/' + page.file, page.text);
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "writePages: " << error.what() << '\n';
        return 5;
    }
}
