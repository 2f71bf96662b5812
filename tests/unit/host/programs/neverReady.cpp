// Keeps running, as long as its standard input does, and never says that it is ready.
#include <cstdio>

int main() {
    while (std::getchar() != EOF) {
    }
    return 0;
}
