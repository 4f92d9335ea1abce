#include "FaceMatching.h"

#include <algorithm>
#include <span>
#include <tuple>

#include "comm/Agreement.h"
#include "comm/Messages.h"
#include "comm/Packing.h"
#include "mesh/CellSides.h"
#include "mesh/MeshFaults.h"
#include "mesh/NodeSets.h"

namespace weldline {

namespace {

constexpr std::int64_t noCell = -1;

// A face as a rank tells of it.
struct Claim {
    int face = 0;
    std::int64_t cell = 0;                // number in the whole mesh
    std::int64_t names[2] = {0, noCell};  // of the cell in the data set; two for an inner face
};

struct ClaimedFace {
    std::uint64_t key = 0;
    std::vector<std::int64_t> nodes;  // ascending
    int rank = 0;
    Claim claim;
    bool operator<(const ClaimedFace& other) const {
        return std::tie(key, nodes, rank) < std::tie(other.key, other.nodes, other.rank);
    }
    bool isSameFace(const ClaimedFace& other) const {
        return key == other.key && nodes == other.nodes;
    }
};

// Tells the ranks that look them up of all faces whose nodes are shared.
class Claims {
  public:
    Claims(int ranks, const MeshPart& part, const FvMesh& mesh,
           const std::vector<SharedNodes>& shared)
        : m_part(part),
          m_mesh(mesh),
          m_isShared(part.nodeNumber.size(), false),
          m_toRanks(static_cast<std::size_t>(ranks)) {
        for (const SharedNodes& list : shared)
            for (const int node : list.nodes) m_isShared[static_cast<std::size_t>(node)] = true;
        for (int f = 0; f < mesh.faceCount(); ++f)
            if (isShared(f)) add(f);
    }

    std::vector<Bytes> messages() {
        std::vector<Bytes> messages;
        messages.reserve(m_toRanks.size());
        for (Packer& packer : m_toRanks) messages.push_back(packer.take());
        return messages;
    }

  private:
    bool isShared(int face) const {
        const std::span<const int> nodes = m_mesh.faceNodes[face];
        return std::all_of(nodes.begin(), nodes.end(),
                           [&](int node) { return m_isShared[static_cast<std::size_t>(node)]; });
    }

    void add(int face) {
        const auto f = static_cast<std::size_t>(face);
        Claim claim;
        claim.face = face;
        claim.cell = m_part.cellNumber[static_cast<std::size_t>(m_mesh.owner[f])];
        claim.names[0] = m_part.fileNumber(m_mesh.owner[f]);
        if (face < m_mesh.innerFaces) claim.names[1] = m_part.fileNumber(m_mesh.neighbour[f]);
        m_nodes.clear();
        for (const int node : m_mesh.faceNodes[face])
            m_nodes.push_back(m_part.nodeNumber[static_cast<std::size_t>(node)]);
        std::sort(m_nodes.begin(), m_nodes.end());
        const std::uint64_t key = nodeSetKey<std::int64_t>(m_nodes);
        m_toRanks[key % m_toRanks.size()].put(key).put(m_nodes).put(claim);
    }

    const MeshPart& m_part;
    const FvMesh& m_mesh;
    std::vector<bool> m_isShared;
    std::vector<Packer> m_toRanks;
    std::vector<std::int64_t> m_nodes;  // working space
};

std::vector<ClaimedFace> sortedClaims(const std::vector<Bytes>& messages) {
    std::vector<ClaimedFace> faces;
    for (std::size_t r = 0; r < messages.size(); ++r) {
        Unpacker unpacker(messages[r]);
        while (!unpacker.atEnd()) {
            ClaimedFace& face = faces.emplace_back();
            unpacker.get(face.key);
            unpacker.get(face.nodes);
            unpacker.get(face.claim);
            face.rank = static_cast<int>(r);
        }
    }
    std::sort(faces.begin(), faces.end());
    return faces;
}

// A face has at most two cells, wherever they lie.
void checkClaims(std::span<const ClaimedFace> claims) {
    std::vector<std::int64_t> cells;
    for (const ClaimedFace& face : claims)
        for (const std::int64_t name : face.claim.names)
            if (name != noCell) cells.push_back(name);
    if (cells.size() < 3) return;
    std::sort(cells.begin(), cells.end());
    failOnThreeCells(cellName(cells[0]), cellName(cells[1]), cellName(cells[2]));
}

std::vector<std::vector<FaceMatch>> pairClaims(const std::vector<ClaimedFace>& faces, int ranks) {
    std::vector<std::vector<FaceMatch>> toRanks(static_cast<std::size_t>(ranks));
    const auto tell = [&](const ClaimedFace& face, const ClaimedFace& other) {
        toRanks[static_cast<std::size_t>(face.rank)].push_back(
            {face.claim.face, other.rank, other.claim.face, other.claim.cell});
    };
    for (std::size_t begin = 0; begin < faces.size();) {
        std::size_t end = begin + 1;
        while (end < faces.size() && faces[end].isSameFace(faces[begin])) ++end;
        checkClaims({faces.data() + begin, end - begin});
        if (end - begin == 2) {
            tell(faces[begin], faces[begin + 1]);
            tell(faces[begin + 1], faces[begin]);
        }
        begin = end;
    }
    return toRanks;
}

}  // namespace

std::vector<FaceMatch> matchFaces(Ranks& ranks, const MeshPart& part, const FvMesh& mesh,
                                  const std::vector<SharedNodes>& shared) {
    const std::vector<ClaimedFace> faces =
        sortedClaims(ranks.exchange(Claims(ranks.size(), part, mesh, shared).messages()));
    const auto toRanks = together(ranks, [&] { return pairClaims(faces, ranks.size()); });
    std::vector<FaceMatch> matches;
    for (const std::vector<FaceMatch>& list : exchangeValues(ranks, toRanks))
        matches.insert(matches.end(), list.begin(), list.end());
    return matches;
}

}  // namespace weldline
