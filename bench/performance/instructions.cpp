// Runs every stage once under callgrind, which counts the instructions of each. Outside of it the
// stages run all the same and nothing is counted.

#include <valgrind/callgrind.h>

#include <iostream>

#include "CalculationStages.h"
#include "HostStages.h"
#include "ReadChoice.h"
#include "base/Errors.h"

using namespace weldline;
using namespace weldline::performance;

namespace {

// Callgrind writes a file per stage, with the stage's name in it.
void count(const Stage& stage) {
    stage.prepare();
    CALLGRIND_ZERO_STATS;
    stage.run();
    CALLGRIND_DUMP_STATS_AT(stage.name.c_str());
    std::cout << stage.name << "\n";
}

}  // namespace

int main(int argc, char** argv) {
    try {
        BoundCase bound(readChoice(argc - 1, argv + 1));
        for (const Stage& stage : joined({calculationStages(bound), hostStages(bound)}))
            if (!stage.name.ends_with("/naive")) count(stage);
        return 0;
    } catch (const UsageError& error) {
        std::cerr << error.what() << "\nusage: weldline_instructions [MESH]\n" << kChoiceUsage;
        return 2;
    }
}
