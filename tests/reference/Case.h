#pragma once

#include <string>
#include <vector>

#include "CaseParameters.h"
#include "PartitionData.h"

namespace weldline::reference {

// A whole random case: what the host holds at each binding, and its control file at each run.
struct Case {
    CaseParameters parameters;
    std::vector<std::vector<PartitionData>> bindings;  // per binding, per partition
    std::vector<std::string> controls;                 // per run

    int partitions() const { return static_cast<int>(bindings.front().size()); }
    int largestSlots() const;

    // How many bindings precede a run.
    static int bindingsBefore(const CaseParameters& parameters, int run);
};

Case buildCase(const CaseParameters& parameters);

// Fills flow, states, stencils and the extreme values of the parameters into one binding.
void fillValues(std::vector<PartitionData>& data, const CaseParameters& parameters, int variant,
                const std::vector<std::vector<int>>& origin);

// Rounds geometry, weights and values of one partition to a coarse grid of dyadic numbers, on which
// sums are exact and ties are common.
void roundToGrid(PartitionData& data, const CaseParameters& parameters);

// Poisons what the calculation has no reason to read in the slots of boundary faces.
void poisonSlots(PartitionData& data);

// Takes cells, nodes, faces or groups away from one binding (`kind` as the knob `empty`).
void emptyMesh(std::vector<PartitionData>& data, int kind);

// The control file of one run.
std::string controlText(const CaseParameters& parameters, int run);

// A control file of long lines, many lines and tags and keys in odd places, with the settings of
// the lines.
std::string oddControlText(const std::vector<std::string>& lines, std::uint64_t seed, int run);

}  // namespace weldline::reference
