#pragma once

#include <vector>

#include "CaseParameters.h"
#include "GlobalMesh.h"
#include "PartitionData.h"

namespace weldline::reference {

// Cuts the box into partitions: local numbers, boundary groups with their slots, halo slots,
// interface faces, lists and geometry. Values of the flow come later; `origin` receives per
// partition and cell slot the global cell whose value belongs there (-1 for none).
std::vector<PartitionData> cutBox(const GlobalMesh& mesh, const CaseParameters& parameters,
                                  int variant, std::vector<std::vector<int>>& origin);

// Partitions without geometry: arbitrary cells, faces and lists with valid numbers.
std::vector<PartitionData> arbitraryGraph(const CaseParameters& parameters, int variant,
                                          std::vector<std::vector<int>>& origin);

// Cells with gradients and positions from a coarse grid, for ties.
std::vector<PartitionData> stagedCells(const CaseParameters& parameters, int variant,
                                       std::vector<std::vector<int>>& origin);

}  // namespace weldline::reference
