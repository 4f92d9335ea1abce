#pragma once

#include <string>

#include "CellSides.h"

namespace weldline {

// What is wrong with a mesh, in the words of its owner. Each throws InputError with one line that
// names the cells, and first looks for the plainer reason: the same cell given twice, a cell that
// is inside out.

[[noreturn]] void failOnSharedFace(const CellMesh& mesh, int cellA, int cellB, int cellC);
[[noreturn]] void failOnRepeatedFace(const CellMesh& mesh, int cell);
[[noreturn]] void failOnVolume(const CellMesh& mesh, int cell, double volume);
[[noreturn]] void failOnOpenCell(const CellMesh& mesh, int cell);

// Both cells lie on the same side of a face that they share. The volumes are signed: negative where
// a cell is inside out.
[[noreturn]] void failOnOverlap(const CellMesh& mesh, int cellA, double volumeA, int cellB,
                                double volumeB);

// The same faults where only the names of the cells are at hand, because they lie on several ranks.
[[noreturn]] void failOnThreeCells(const std::string& cellA, const std::string& cellB,
                                   const std::string& cellC);
[[noreturn]] void failOnSameSide(const std::string& cellA, const std::string& cellB);

[[noreturn]] void failOnForeignFace(const Patch& patch, int face);

}  // namespace weldline
