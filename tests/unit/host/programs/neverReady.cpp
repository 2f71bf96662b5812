// Runs until its standard input ends and never reports readiness.
#include <cstdio>

int main() {
    while (std::getchar() != EOF) {
    }
    return 0;
}
