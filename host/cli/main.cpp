#include <ios>

#include "cli/mordhost.h"
#include "system/hostSystem.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false); // no code here uses the output functions of C
    mordhost::PrepareStreams();
    return mordhost::RunMordhost(mordhost::ProgramArguments(argc, argv));
}
