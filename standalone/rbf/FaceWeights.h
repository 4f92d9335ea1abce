#pragma once

#include <span>

#include "mesh/Vec3.h"

namespace weldline {

// Stencil sizes. The linear terms of an interpolation in space are four; the usual advice for local
// interpolation with polynomial terms is a stencil of at least twice their number (Bayona, Flyer,
// Fornberg, Barnett: On the role of polynomials in RBF-FD approximations II, J. Comput. Phys. 332,
// 2017, 257-273). The cells around a face are 12 on hexahedra and 8 on tetrahedra; of the two dozen
// on polyhedra the nearest 16 are enough and keep the dense solve small.
inline constexpr int kMinStencil = 8;
inline constexpr int kMaxStencil = 16;

// How the weights of a face came about, best first.
enum class WeightKind {
    Spatial,  // linear terms in all three directions
    Planar,   // the cell centres lie in one plane, or span a third direction too weakly
    Axial,    // the cell centres lie on one line, or span a second direction too weakly
    TwoCell   // no stencil beyond the two cells, or none that is usable: linear with lambda
};

// Interpolation weights of the cells at `centres` for the value at `faceCentre`.
//
//  - Basis function r^3, the cubic polyharmonic spline with linear terms. It has no shape
//    parameter, and with these terms the system is solvable for any distinct points that span them
//    (Flyer, Fornberg, Bayona, Barnett: On the role of polynomials in RBF-FD approximations I,
//    J. Comput. Phys. 321, 2016, 21-38).
//  - Distances are measured in the stencil's own spread: r^2 is the squared distance with the
//    inverse covariance matrix of the cell centres (Nielson: Coordinate free scattered data
//    interpolation, in: Topics in Multivariate Approximation, 1987, 175-184). Therefore the
//    weights do not depend on the unit of length, on position and orientation, nor on a stretching
//    of the mesh, and thin cells are as well conditioned as cubes.
//  - The system is solved by the null-space method: the part of the weights that reproduces linear
//    fields comes from an orthonormal basis of the linear terms at the cell centres, the rest from
//    a Cholesky factorisation in its orthogonal complement. So the weights sum to 1 and reproduce
//    linear fields to rounding however badly the rest is conditioned.
//
// Degenerate stencils: directions that the cell centres do not span (spread below 1e-8 of the
// largest) leave the linear terms, and the face centre is projected onto the plane or line of the
// centres. The weakest direction is given up, too, when the weights would extrapolate (sum of
// their absolute values above kLargestWeightSum). Two cells, or coinciding centres, interpolate
// linearly: 1 - lambda and lambda.
//
// centres: 2 to kMaxStencil points, the face's two cells first; lambda: interpolation weight of
// the second cell; weights: one per centre, written. Lengths in any one unit. No heap memory.
WeightKind faceWeights(std::span<const Vec3> centres, Vec3 faceCentre, double lambda,
                       std::span<double> weights);

// Typical stencils stay below 2; beyond this sum single cell values would dominate the face value.
inline constexpr double kLargestWeightSum = 4.0;

}  // namespace weldline
