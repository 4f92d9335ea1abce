#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "MeshPart.h"
#include "comm/Ranks.h"

namespace weldline {

// Faces of patches, their corners by the numbers of the whole mesh.
struct PatchFaces {
    std::vector<int> patch;   // per face the patch's place in MeshPart::patches
    std::vector<int> number;  // per face its 0-based number as given to this rank, for messages
    std::vector<std::int64_t> offsets{0};
    std::vector<std::int64_t> nodes;  // of face i: from offsets[i] to, not including, [i + 1]

    std::size_t count() const { return patch.size(); }
    std::span<const std::int64_t> corners(std::size_t face) const;
    void append(int ofPatch, int withNumber, std::span<const std::int64_t> corners);
};

// Brings every face to the patches of the rank that has its cell; the patches have their names
// already. One process keeps all faces and leaves it to others to say which are foreign. Throws
// InputError, on all ranks, where no rank has a face. Collective.
void deliverPatchFaces(Ranks& ranks, const PatchFaces& faces, MeshPart& part);

}  // namespace weldline
