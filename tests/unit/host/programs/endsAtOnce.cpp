// Ends before it writes the line that reports readiness.
#include <cstdio>

int main() {
    std::fputs("a beginning of a line", stdout);
    return 3;
}
