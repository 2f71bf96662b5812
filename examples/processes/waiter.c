/* A program that mordhost starts: it reports that it is ready, and waits until its standard input ends. */
#include <stdio.h>

int main(void) {
    puts("ready");
    fflush(stdout);
    while (getchar() != EOF) {
    }
    return 0;
}
