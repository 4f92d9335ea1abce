#pragma once

#include <vector>

#include "CaseParameters.h"

namespace weldline::reference {

struct Point {
    double x, y, z;
};

// A mesh before it is cut into partitions; numbers are 0-based.
struct GlobalMesh {
    struct Cell {
        std::vector<int> nodes;
        std::vector<std::vector<int>> faces;  // node loops
        Point centre{0, 0, 0};
        double volume = 0.0;
    };
    struct Face {
        int first = -1;
        int second = -1;  // -1: a boundary face
        std::vector<int> nodes;
        Point centre{0, 0, 0};
        Point area{0, 0, 0};  // from the first cell to the second or outward
        int side = -1;        // boundary faces: side of the box, -1 if on none
    };

    std::vector<Point> nodes;
    std::vector<Cell> cells;
    std::vector<Face> faces;
};

// A box of cells of the kind that the parameters ask for (0 to 3). The variant changes positions,
// never counts.
GlobalMesh buildBox(const CaseParameters& parameters, int variant);

}  // namespace weldline::reference
