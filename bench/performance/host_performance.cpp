// Times the stand-alone host from the cells of a data set to bound host objects, with the memory of
// the program, and VTK's work of the same kind.

#include "HostStages.h"
#include "RunStages.h"

using namespace weldline::performance;

int main(int argc, char** argv) {
    return runStages(argc, argv, [](BoundCase& bound) {
        return joined({hostStages(bound), surfaceFilterStages(bound)});
    });
}
