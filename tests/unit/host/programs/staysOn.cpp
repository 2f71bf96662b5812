// Reports readiness and ignores the end of its standard input for a minute.
#include <chrono>
#include <cstdio>
#include <thread>

int main() {
    std::puts("ready");
    std::fflush(stdout);
    std::this_thread::sleep_for(std::chrono::minutes(1));
    return 0;
}
