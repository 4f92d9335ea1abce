// Times the calculation: each step by the library, by the plain transcription, and what bounds it.

#include "CalculationStages.h"
#include "HostStages.h"
#include "RunStages.h"

using namespace weldline::performance;

int main(int argc, char** argv) {
    return runStages(argc, argv, [](BoundCase& bound) {
        return joined({calculationStages(bound), graphStages(bound), gradientFilterStages(bound)});
    });
}
