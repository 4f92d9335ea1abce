#pragma once

#include <limits>
#include <utility>
#include <vector>

namespace weldline::reference {

// What stands in slots that nobody may read.
inline constexpr double poisonReal = std::numeric_limits<double>::quiet_NaN();
inline constexpr float poisonFlow = std::numeric_limits<float>::quiet_NaN();
inline constexpr int poisonInt = -1234567890;

// Everything that one process hands to the calculation, as plain vectors. All are 1-based with a
// poisoned slot 0; cell slots are own cells, boundary slots, halo slots.
struct PartitionData {
    using Reals = std::vector<double>;
    using Ints = std::vector<int>;
    using IntRows = std::vector<std::vector<int>>;

    // Boundary faces of one group.
    struct Group {
        Reals xc = {poisonReal}, yc = {poisonReal}, zc = {poisonReal};
        Reals sx = {poisonReal}, sy = {poisonReal}, sz = {poisonReal};
        Ints cell = {poisonInt}, slot = {poisonInt};

        int count() const { return static_cast<int>(cell.size()) - 1; }
    };

    // Faces between this partition and its neighbours.
    struct Interface {
        Ints cell = {poisonInt}, halo = {poisonInt};
        Reals xc = {poisonReal}, yc = {poisonReal}, zc = {poisonReal};
        Reals sx = {poisonReal}, sy = {poisonReal}, sz = {poisonReal};
        Reals lambda = {poisonReal};
        IntRows nodes = {{}};

        int count() const { return static_cast<int>(cell.size()) - 1; }
    };

    // The slot that a halo exchange fills and the own cell of the partition it comes from.
    struct HaloSource {
        int slot;
        int partition;
        int cell;
    };

    // One preparation of the RBF objects: per inner face the stencil with its count and the
    // weights.
    struct Stencils {
        IntRows cells = {{}};
        std::vector<Reals> weights = {{}};
    };

    enum GroupKind { wall, inlet, outlet, symmetry, groupCount };

    int cells = 0;
    int slots = 0;
    int nodes = 0;

    Reals xc = {poisonReal}, yc = {poisonReal}, zc = {poisonReal};  // per cell slot
    Reals volume = {poisonReal};
    Reals nodeX = {poisonReal}, nodeY = {poisonReal}, nodeZ = {poisonReal};  // per node
    std::vector<Reals> innerFace = {{}};  // rows of 9: [1], [2] cells, [3..5] area, [6..8] centre
    Reals lambda = {poisonReal};          // per inner face
    IntRows cellNode = {{}}, cellFace = {{}};  // per own cell
    IntRows cellFaceType = {{}}, cellNeighbour = {{}};
    Group group[groupCount];
    Interface interface;
    std::vector<HaloSource> halo;

    std::vector<float> flow = {poisonFlow}, biInjection = {poisonFlow};  // per cell slot
    Ints cellState = {poisonInt};                                        // per own cell
    Stencils stencils[2];  // of the first and of every further preparation

    int innerFaces() const { return static_cast<int>(innerFace.size()) - 1; }
};

}  // namespace weldline::reference
