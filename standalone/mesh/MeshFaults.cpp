#include "MeshFaults.h"

#include <string>

#include "NodeSets.h"
#include "base/Errors.h"

namespace weldline {
namespace {

void failOnSameCell(const CellMesh& mesh, int cellA, int cellB) {
    if (sameNodeSet(mesh.cellNodes[cellA], mesh.cellNodes[cellB])) {
        throw InputError(cellName(mesh, cellB) + " is the same as " + cellName(mesh, cellA) +
                         "; each cell may be given only once");
    }
}

}  // namespace

void failOnSharedFace(const CellMesh& mesh, int cellA, int cellB, int cellC) {
    failOnSameCell(mesh, cellA, cellB);
    failOnSameCell(mesh, cellA, cellC);
    failOnSameCell(mesh, cellB, cellC);
    failOnThreeCells(cellName(mesh, cellA), cellName(mesh, cellB), cellName(mesh, cellC));
}

void failOnThreeCells(const std::string& cellA, const std::string& cellB,
                      const std::string& cellC) {
    throw InputError(cellA + ", " + cellB + " and " + cellC +
                     " share one face; a face has at most two cells");
}

void failOnRepeatedFace(const CellMesh& mesh, int cell) {
    throw InputError(cellName(mesh, cell) + " has one of its faces twice; each may be given once");
}

void failOnVolume(const CellMesh& mesh, int cell, double volume) {
    if (volume < 0.0) {
        throw InputError(cellName(mesh, cell) +
                         " has a negative volume: its nodes are listed inside out or it is folded");
    }
    throw InputError(cellName(mesh, cell) + " has no volume; its nodes lie in one plane");
}

void failOnOpenCell(const CellMesh& mesh, int cell) {
    throw InputError(cellName(mesh, cell) +
                     " is not closed: its faces leave a gap; every edge needs two faces");
}

void failOnOverlap(const CellMesh& mesh, int cellA, double volumeA, int cellB, double volumeB) {
    failOnSameCell(mesh, cellA, cellB);
    if (volumeA < 0.0) {
        failOnVolume(mesh, cellA, volumeA);
    }
    if (volumeB < 0.0) {
        failOnVolume(mesh, cellB, volumeB);
    }
    failOnSameSide(cellName(mesh, cellA), cellName(mesh, cellB));
}

void failOnSameSide(const std::string& cellA, const std::string& cellB) {
    throw InputError(cellA + " and " + cellB +
                     " overlap: they lie on the same side of the face that they share");
}

void failOnForeignFace(const Patch& patch, int face) {
    throw InputError("face " + std::to_string(face) + " of patch '" + patch.name +
                     "' is no boundary face of a cell; a patch has to lie on the mesh's surface");
}

}  // namespace weldline
