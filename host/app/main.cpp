#include "app/mordhost.h"
#include "system/hostSystem.h"

int main(int argc, char** argv) {
    mordhost::PrepareStreams();
    return mordhost::RunMordhost(mordhost::ProgramArguments(argc, argv));
}
