/* A program for mordhost to start: it says that it is ready, and waits until its standard input ends. */
#include <stdio.h>

int main(void) {
    puts("ready");
    fflush(stdout);
    while (getchar() != EOF) {
    }
    return 0;
}
