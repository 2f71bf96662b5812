// Removes the directory that MORDHOST_TEST_REMOVES names and then reports readiness.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

int main() {
    const char* const name = std::getenv("MORDHOST_TEST_REMOVES");
    std::error_code ignored;
    std::filesystem::remove_all(name == nullptr ? "" : name, ignored);
    std::puts("ready");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
