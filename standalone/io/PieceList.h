#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace weldline {

// A part of a data set that is read as a whole.
struct Piece {
    enum class Kind : std::uint8_t {
        Grids,       // a .vtu or .vtk file: every grid in it that has cells is one of volume cells
        Block,       // a .vtu or .vtp file: volume or surface, by what it holds
        Case,        // an OpenFOAM case, or what one process has of a decomposed one
        Collection,  // a .pvd file, which names files for times
        Cgns,
        EnSight,
        Exodus,
        Gmsh,
        Other  // a file that holds no grid
    };
    Kind kind = Kind::Grids;
    std::string file;
    std::string name;    // of its grids, empty where the data set has one without a name; of a
                         // decomposed case the folder of the process
    double bytes = 0.0;  // what there is to read, for sharing the work
};

struct PieceList {
    std::string file;
    std::string format;  // "VTK XML unstructured grid", "OpenFOAM case", ...
    std::vector<Piece> pieces;

    bool isCase() const { return !pieces.empty() && pieces.front().kind == Piece::Kind::Case; }
};

// Lists the pieces of a data set in their order, which is that of cells and points. A decomposed
// OpenFOAM case consists of the folders of its processes; they are read where the case itself has
// no mesh or where they hold a later time. Throws InputError.
PieceList listPieces(const std::string& file);

// Per piece the rank that reads it. The pieces go to the ranks in their order, in stretches of
// about the same number of bytes; with fewer pieces than ranks each goes to a rank of its own.
std::vector<int> dealPieces(const std::vector<Piece>& pieces, int ranks);

// The same for one kind of data set that names other files; listPieces has looked at the file.
std::vector<Piece> listGridFiles(const std::string& file);   // .pvtu
std::vector<Piece> listBlockFiles(const std::string& file);  // .vtm
std::vector<Piece> listCase(const std::string& file);        // .foam

// Whether a .foam file that does not exist names an OpenFOAM case all the same: nothing is in it.
bool needsNoMarker(const std::string& file);

}  // namespace weldline
