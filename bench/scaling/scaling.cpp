// Measures what cutting a mesh brings and costs. Started by mpiexec, or alone for one rank:
//
//   weldline_scaling run CELLS [metis]    one calculation
//   weldline_scaling exchange             halo exchanges of rising size between two ranks
//   weldline_scaling cut CELLS            surface of METIS cuts into 2 to 4,096 parts

#include <cstdio>
#include <cstdlib>
#include <string>

#include "Studies.h"
#include "comm/MpiRanks.h"

int main(int argc, char** argv) {
    weldline::MpiSession session(argc, argv);
    const auto ranks = session.world();
    const std::string study = argc > 1 ? argv[1] : "";
    const double cells = argc > 2 ? std::atof(argv[2]) : 0.0;
    if (study == "run" && cells > 0.0) {
        weldline::studyRun(*ranks, cells, argc > 3 && argv[3] == std::string("metis"));
    } else if (study == "exchange") {
        weldline::studyExchange(*ranks);
    } else if (study == "cut" && cells > 0.0) {
        weldline::studyCut(cells);
    } else {
        std::fputs("usage: weldline_scaling run CELLS [metis] | exchange | cut CELLS\n", stderr);
        return 2;
    }
    return 0;
}
