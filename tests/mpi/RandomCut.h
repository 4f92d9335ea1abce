#pragma once

#include <string>
#include <vector>

#include "partition/MeshPart.h"

namespace weldline::test {

// A small filling result and a cut of it, all from one number. Every fourth cut is by METIS; the
// others are those that METIS would not make: cells dealt to ranks by chance, single cells
// scattered in one large part, ranks without cells between others, all cells on one rank, layers
// one cell thick.
struct RandomCut {
    explicit RandomCut(int number, int ranks);

    MeshPart whole;  // its first cell field is the fill time
    std::vector<int> partOfCell;
    std::string settings;  // the control text
    int method = 4;
    int gradient = 3;
};

}  // namespace weldline::test
