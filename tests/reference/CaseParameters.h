#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace weldline::reference {

// A random case in short: a seed and named knobs. The seed decides all details, the knobs what
// kinds of details there are, so a failing case can be made simpler knob by knob and replayed from
// its text. Percentages are whole numbers from 0 to 100.
struct CaseParameters {
    std::uint64_t seed = 1;

    // Mesh. Kind: 0 hexahedra, 1 tetrahedra, 2 hexahedra, wedges and pyramids, 3 polyhedra merged
    // from these, 4 an arbitrary graph of cells and faces with no geometry behind it, 5 cells with
    // gradients and positions from a coarse grid.
    int kind = 0;
    int nx = 2, ny = 1, nz = 1;
    int jitter = 0;         // of the nodes, percent of the spacing
    int squash = 0;         // 1: thin in z, 2: all nodes in one plane, 3: next to nothing in y
    int outletSides = 0;    // bits 0 to 5: the sides -x, +x, -y, +y, -z, +z of the box
    int inletSides = 0;     // are outlet, inlet or symmetry faces; the others are wall faces
    int symmetrySides = 0;  //
    int groupMix = 0;       // percent of boundary faces with a random group
    int partitions = 1;     // 1 to 4
    int renumber = 0;       // 1: cells, faces, nodes and lists in random order
    int fractions = 0;      // percent of cell numbers in face records with a fractional part
    int empty = 0;          // 1 no cells, 2 no nodes, 3 no inner faces, 4 no boundary faces,
                            // 5 neither, 6 nothing at all, 7 the last partition has nothing
    int emptyAt = 0;        // 0: at all bindings, else at this one only

    // Values. Flow: 0 two sources, 1 random, 2 one source, 3 constant, 4 linear, 5 few values,
    // 6 three sources.
    int flow = 0;
    int flowScale = 0;    // power of ten
    int slotValues = 0;   // boundary slots: 0 own cell's value, 1 random, 2 zero
    int unreached = 0;    // percent of slots with a value around the limit of "reached"
    int specials = 0;     // percent of slots with NaN, infinite or extreme values
    int zeroVolumes = 0;  // percent
    int oddGeometry = 0;  // per mille of geometric numbers replaced by extreme ones
    int limitFlow = 0;    // 1: one smoothing pass gives values of exactly 1e-30, 2e-30 and so on
    int cellState = 0;    // percent of cells with a state
    int mode11 = 0;       // 1: bi-injection
    int rbf = 0;          // 0 the face's two cells, 1 random stencils, 2 also empty ones
    int grid = 0;         // 1: all numbers lie on a coarse dyadic grid, so that ties are common
    int poison = 0;       // 1: NaN in boundary slots where nobody has a reason to read

    // Host.
    int meshFileType = 0;
    int gradSwitch = 0;   // index of a value of the gradient-set switch
    int allMax = 0;       // 0 true maximum, 1 to 4: the host answers -1, 0, 1 or 2
    int nullObjects = 0;  // bits: partition, communication, collective object null
    int nullValues = 0;   // bits: process number, mode, gradient-set switch, mesh path null
    int nullArrays = 0;   // 1: arrays of nothing are null
    int moving = 0;       // 1: the partition arrays move at every access, 2: their memory goes
    int guard = 0;        // 1: arrays end at a page nobody may touch, 2: they begin behind one
    int tails = 0;        // 1: rows have a poisoned tail
    int scramble = 0;     // 1: the host forgets its mesh pointers after binding
    int handle = 0;       // 1: through the public class, results only
    int rank = 0;         // 1: a single process that is not the master, 2: from the second run on
    int setters = 0;      // 1: setters are called between the runs
    int processes = 0;    // 1: the partitions are played as processes, too

    // Control file. Kind: 0 missing, 1 tidy, 2 noisy, 3 without a section, 4 spoiled bytes, 5 long
    // lines and many lines.
    int control = 1;
    int path = 0;          // 0 run.cmp, 1 no dot, 2 dot in a folder, 3 long extension, 4 null,
                           // 5 a folder, 6 long, 7 longer than the field for the trace file's name
    int meshPath = 0;      // index of a path
    int debug = 0;         // 1: FlagDebugOutput = 1
    int debugBlocked = 0;  // 1: the trace file cannot be opened
    int method = 4;
    int gradMethod = 3;
    int nGrad = 2;
    int smoothBefore = 0;
    int smoothAfter = 0;
    int boundaryAngle = 0;  // index of a value, 0: not given
    int filterPara = 0;     // index of a value, 0: not given
    int volumeFilter = 0;   // index of a value, 0: not given
    int truncate = 0;       // 1: TruncateAngle is given

    // Sequence.
    int runs = 1;
    int rebind = 0;         // bits: bind again before run 2, 3
    int extraBindings = 0;  // before the first run
    int remesh = 0;       // later bindings have 0 the same counts, 1 smaller, 2 larger ones, 3 any
    int newSettings = 0;  // 1: other settings in each run
    int mutate = 0;       // 1: the host changes arrays in place between runs

    bool operator==(const CaseParameters&) const = default;
};

struct Knob {
    const char* name;
    int CaseParameters::*field;
};

// All knobs, the most simplifying ones first.
std::span<const Knob> knobs();

// The case of a seed.
CaseParameters drawCase(std::uint64_t seed);

// "seed=7 kind=1 ...": the knobs that differ from their simplest values.
std::string inWords(const CaseParameters& parameters);

// Reads that text back; nothing for an unknown knob or an unreadable number.
std::optional<CaseParameters> parseCase(const std::string& text);

}  // namespace weldline::reference
