// Ends without a line that says that it is ready.
#include <cstdio>

int main() {
    std::fputs("a beginning of a line", stdout);
    return 3;
}
