#include "PieceList.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <system_error>

#include "OpenDataSet.h"

namespace weldline {
namespace {

namespace fs = std::filesystem;

PieceList oneFile(const std::string& file, const char* format,
                  Piece::Kind kind = Piece::Kind::Grids) {
    std::error_code none;
    const std::uintmax_t bytes = fs::file_size(file, none);
    return {file, format, {{kind, file, "", none ? 0.0 : static_cast<double>(bytes)}}};
}

PieceList listByExtension(const std::string& file) {
    const std::string extension = lowerExtension(file);
    if (extension == ".vtu") {
        return oneFile(file, "VTK XML unstructured grid");
    }
    if (extension == ".vtk") {
        return oneFile(file, "legacy VTK unstructured grid");
    }
    if (extension == ".pvtu") {
        return {file, "VTK XML unstructured grid in pieces", listGridFiles(file)};
    }
    if (extension == ".vtm") {
        return {file, "VTK XML multi-block data set", listBlockFiles(file)};
    }
    if (extension == ".foam") {
        std::vector<Piece> pieces = listCase(file);
        const bool isWhole = pieces.front().name.empty();
        return {file, isWhole ? "OpenFOAM case" : "decomposed OpenFOAM case", std::move(pieces)};
    }
    if (extension == ".pvd") {
        return oneFile(file, "collection of VTK files over time", Piece::Kind::Collection);
    }
    if (extension == ".cgns") {
        return oneFile(file, "CGNS file", Piece::Kind::Cgns);
    }
    if (extension == ".case") {
        return oneFile(file, "EnSight case", Piece::Kind::EnSight);
    }
    if (extension == ".e" || extension == ".ex2" || extension == ".exo") {
        return oneFile(file, "Exodus file", Piece::Kind::Exodus);
    }
    if (extension == ".msh") {
        return oneFile(file, "gmsh mesh", Piece::Kind::Gmsh);
    }
    failOnInput(file,
                "unknown kind of data set; .vtu, .pvtu, .vtk, .vtm, .pvd, .cgns, .case "
                "(EnSight), .e, .ex2 and .exo (Exodus), .msh (gmsh), and OpenFOAM cases (folder or "
                ".foam) can be read");
}

// Per piece the place of its middle among the bytes of all, from 0 to 1. A piece without a size,
// which may not be there, weighs as little as can be.
std::vector<double> placesOf(const std::vector<Piece>& pieces) {
    double sum = 0.0;
    std::vector<double> places;
    for (const Piece& piece : pieces) {
        const double bytes = std::max(piece.bytes, 1.0);
        places.push_back(sum + 0.5 * bytes);
        sum += bytes;
    }
    for (double& place : places) {
        place /= sum;
    }
    return places;
}

}  // namespace

std::vector<int> dealPieces(const std::vector<Piece>& pieces, int ranks) {
    const auto count = static_cast<int>(pieces.size());
    std::vector<int> reader;
    for (const double place : placesOf(pieces)) {
        const auto piece = static_cast<int>(reader.size());
        const int last = reader.empty() ? -1 : reader.back();
        // No rank between two readers is left out while pieces last, and every piece has a reader.
        const int least = count < ranks ? last + 1 : std::max(last, ranks - (count - piece));
        const int most = count < ranks ? ranks - (count - piece) : last + 1;
        reader.push_back(std::clamp(static_cast<int>(place * ranks), std::max(least, 0), most));
    }
    return reader;
}

PieceList listPieces(const std::string& file) {
    if (!needsNoMarker(file)) {
        checkReadable(file);
    }
    try {
        return listByExtension(file);
    } catch (const std::bad_alloc&) {
        failOnInput(file, "the file is damaged or larger than the memory");
    } catch (const std::length_error&) {
        failOnInput(file, "the file is damaged");
    }
}

}  // namespace weldline
