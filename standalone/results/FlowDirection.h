#pragma once

#include <vector>

#include "mesh/FvMesh.h"

namespace weldline {

// The cells across the interface faces of a part of a mesh, one entry per such face.
struct CellsAcross {
    std::vector<float> fillTime;
    std::vector<double> lambda;  // interpolation weight of the cell across
};

// Gradient of the fill time per cell, in its unit per unit of length, by Green-Gauss over the
// cell's faces, formed with differences from the cell's own fill time: sum of (face value - own
// value) * area vector / volume. The face value is interpolated linearly between reached cells; at
// boundary faces and towards unreached cells it is the own value, which adds nothing. `fillTime`
// has one value per cell (exactly 0 where the melt did not come).
std::vector<Vec3> fillTimeGradients(const FvMesh& mesh, const std::vector<float>& fillTime,
                                    const CellsAcross& across = {});

// Flow direction per cell: the unit vector of the fill-time gradient, which points along the flow;
// the zero vector where the melt did not come, where it is unknown (no reached neighbour) and where
// the gradient vanishes.
std::vector<Vec3> flowDirections(const FvMesh& mesh, const std::vector<float>& fillTime,
                                 const CellsAcross& across = {});

// Gradients shorter than this count as no flow in the library's upwind, least-squares and RBF
// schemes, whatever the unit of length is.
inline constexpr double kFlatFillTimeGradient = 0.001;

// Number of cells whose fill time rises, but less than kFlatFillTimeGradient. Many of them mean
// that the unit of length is too small for the calculation.
int countFlatCells(const FvMesh& mesh, const std::vector<float>& fillTime,
                   const CellsAcross& across = {});

}  // namespace weldline
