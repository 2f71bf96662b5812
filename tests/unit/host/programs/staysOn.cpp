// Says that it is ready, and does not end when its standard input does; not before a minute has gone, at least.
#include <chrono>
#include <cstdio>
#include <thread>

int main() {
    std::puts("ready");
    std::fflush(stdout);
    std::this_thread::sleep_for(std::chrono::minutes(1));
    return 0;
}
