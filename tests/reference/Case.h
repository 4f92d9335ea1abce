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
};

Case buildCase(const CaseParameters& parameters);

// Fills flow, states, stencils and the extreme values of the parameters into one binding.
void fillValues(std::vector<PartitionData>& data, const CaseParameters& parameters, int variant,
                const std::vector<std::vector<int>>& origin);

// The control file of one run.
std::string controlText(const CaseParameters& parameters, int run);

}  // namespace weldline::reference
