#include "BoundaryGroups.h"

#include <algorithm>
#include <regex>

#include "MeshFaults.h"
#include "NodeSets.h"
#include "base/Errors.h"

namespace weldline {
namespace {

constexpr int noPatch = -1;

std::regex compilePattern(const std::string& pattern, const char* group) {
    try {
        return std::regex(pattern, std::regex::ECMAScript | std::regex::icase);
    } catch (const std::regex_error&) {
        throw UsageError("the pattern '" + pattern + "' for " + group +
                         " patches is not a regular expression; an example is 'gate|sprue'");
    }
}

class PatchNames {
  public:
    explicit PatchNames(const GroupPatterns& patterns)
        : inlet_(compilePattern(patterns.inlet, "inlet")),
          outlet_(compilePattern(patterns.outlet, "outlet")),
          symmetry_(compilePattern(patterns.symmetry, "symmetry")) {}

    GroupKind kindOf(const std::string& name) const {
        if (std::regex_search(name, inlet_)) {
            return GroupKind::Inlet;
        }
        if (std::regex_search(name, outlet_)) {
            return GroupKind::Outlet;
        }
        return std::regex_search(name, symmetry_) ? GroupKind::Symmetry : GroupKind::Wall;
    }

  private:
    std::regex inlet_;
    std::regex outlet_;
    std::regex symmetry_;
};

// Finds boundary faces by their nodes.
class BoundaryFaces {
  public:
    explicit BoundaryFaces(const FvMesh& mesh) : mesh_(mesh) {
        faces_.reserve(static_cast<std::size_t>(mesh.boundaryFaces()));
        for (int f = mesh.innerFaces; f < mesh.firstInterfaceFace(); ++f) {
            faces_.push_back({nodeSetKey(mesh.faceNodes[f]), f});
        }
        std::sort(faces_.begin(), faces_.end());
    }

    // Number from 0 among the boundary faces, -1 where no boundary face has these nodes.
    int find(std::span<const int> nodes) const {
        const std::uint64_t key = nodeSetKey(nodes);
        for (auto it = std::lower_bound(faces_.begin(), faces_.end(), std::pair{key, 0});
             it != faces_.end() && it->first == key; ++it) {
            if (sameNodeSet(mesh_.faceNodes[it->second], nodes)) {
                return it->second - mesh_.innerFaces;
            }
        }
        return -1;
    }

  private:
    const FvMesh& mesh_;
    std::vector<std::pair<std::uint64_t, int>> faces_;
};

[[noreturn]] void failOnTwoPatches(const Patch& patch, int face, const std::string& other) {
    throw InputError("face " + std::to_string(face) + " of patch '" + patch.name +
                     "' lies in patch '" + other +
                     "', too, which belongs to another group; a face has one group");
}

}  // namespace

BoundaryGroups groupBoundaryFaces(const FvMesh& mesh, const std::vector<Patch>& patches,
                                  const GroupPatterns& patterns) {
    const PatchNames names(patterns);
    const BoundaryFaces faces(mesh);
    BoundaryGroups groups;
    groups.fromDataSet = !patches.empty();
    groups.kinds.assign(static_cast<std::size_t>(mesh.boundaryFaces()), GroupKind::Wall);
    std::vector<int> patchOfFace(groups.kinds.size(), noPatch);

    for (std::size_t p = 0; p < patches.size(); ++p) {
        const Patch& patch = patches[p];
        groups.patches.push_back({patch.name, names.kindOf(patch.name), patch.faces.count()});
        for (int i = 0; i < patch.faces.count(); ++i) {
            const int found = faces.find(patch.faces[i]);
            if (found < 0) {
                failOnForeignFace(patch, i);
            }
            const auto f = static_cast<std::size_t>(found);
            const GroupKind kind = groups.patches[p].kind;
            if (patchOfFace[f] != noPatch && groups.kinds[f] != kind) {
                failOnTwoPatches(patch, i, patches[static_cast<std::size_t>(patchOfFace[f])].name);
            }
            patchOfFace[f] = static_cast<int>(p);
            groups.kinds[f] = kind;
        }
    }
    const auto without =
        static_cast<int>(std::count(patchOfFace.begin(), patchOfFace.end(), noPatch));
    if (without > 0) {
        groups.patches.push_back({"(no patch)", GroupKind::Wall, without});
    }
    return groups;
}

}  // namespace weldline
