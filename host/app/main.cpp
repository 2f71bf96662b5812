#include <ios>

#include "app/mordhost.h"
#include "system/hostSystem.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false); // nothing here writes by the functions of C
    mordhost::PrepareStreams();
    return mordhost::RunMordhost(mordhost::ProgramArguments(argc, argv));
}
