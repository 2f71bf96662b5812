// Prints the keys of this process, for a test that compares processes: a word in each line. Linked once with the real
// system and once with a scripted one whose source of randomness fails.
#include <cstdio>

#include "unit/mordRev/keyWords.h"

void PrepareSystem(); // of the program: which system it has

int main() {
    PrepareSystem();
    for (const uint32_t word : Words(ProcessHashKeys())) {
        std::printf("%08x\n", word);
    }
}
