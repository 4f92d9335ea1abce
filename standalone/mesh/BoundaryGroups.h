#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "FvMesh.h"

namespace weldline {

enum class GroupKind : std::uint8_t { Wall, Inlet, Outlet, Symmetry };

// ECMAScript regular expressions, searched anywhere in a patch name without regard to case and
// tested in the order inlet, outlet, symmetry; a patch that matches none is wall.
struct GroupPatterns {
    std::string inlet = "inlet|gate|sprue";
    std::string outlet = "outlet|vent";
    std::string symmetry = "symm|symmetry";
};

struct BoundaryGroups {
    struct PatchSummary {
        std::string name;
        GroupKind kind = GroupKind::Wall;
        std::int64_t faces = 0;
    };
    std::vector<GroupKind> kinds;       // per boundary face of the mesh, from face innerFaces on
    std::vector<PatchSummary> patches;  // in the data set's order; a last entry "(no patch)" counts
                                        // boundary faces in no patch, which are wall
    bool fromDataSet = false;           // false: the data set has no patches, every face is wall
};

// Assigns every boundary face of the mesh to a group by the patch that contains it.
// Throws InputError when a patch face is no boundary face of the mesh, and UsageError when a
// pattern is not a regular expression.
BoundaryGroups groupBoundaryFaces(const FvMesh& mesh, const std::vector<Patch>& patches,
                                  const GroupPatterns& patterns);

}  // namespace weldline
