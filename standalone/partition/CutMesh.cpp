#include "CutMesh.h"

#include <metis.h>

#include <array>
#include <csignal>
#include <new>
#include <numeric>

#include "base/Errors.h"
#include "mesh/SideMatching.h"
#include "mesh/SideOrientation.h"

namespace weldline {

namespace {

struct DualGraph {
    std::vector<idx_t> offsets{0};  // neighbours of cell c: from offsets[c] to offsets[c + 1]
    std::vector<idx_t> neighbours;
    std::vector<idx_t> weights;  // per cell
};

DualGraph dualGraph(const CellMesh& mesh) {
    const CellSides sides(mesh);
    const std::vector<int> partner = matchSides(mesh, sides, orientSides(mesh, sides));
    DualGraph graph;
    graph.offsets.reserve(static_cast<std::size_t>(mesh.cellCount()) + 1);
    graph.weights.reserve(static_cast<std::size_t>(mesh.cellCount()));
    graph.neighbours.reserve(partner.size());
    for (int c = 0; c < mesh.cellCount(); ++c) {
        for (int s = sides.first(c); s < sides.end(c); ++s) {
            const int other = partner[static_cast<std::size_t>(s)];
            if (other >= 0) graph.neighbours.push_back(sides.cell(other));
        }
        graph.offsets.push_back(static_cast<idx_t>(graph.neighbours.size()));
        graph.weights.push_back(sides.end(c) - sides.first(c));
    }
    return graph;
}

// METIS answers SIGTERM during its work by an error of its own; the signal has to wait for whoever
// handles it in this program.
class TerminationHeld {
  public:
    TerminationHeld() {
        sigset_t termination;
        ::sigemptyset(&termination);
        ::sigaddset(&termination, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &termination, &m_before);
    }
    ~TerminationHeld() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    TerminationHeld(const TerminationHeld&) = delete;
    TerminationHeld& operator=(const TerminationHeld&) = delete;

  private:
    sigset_t m_before{};
};

std::vector<int> cutGraph(DualGraph& graph, int parts) {
    static_assert(sizeof(idx_t) == sizeof(int), "the parts are written as plain integers");
    std::array<idx_t, METIS_NOPTIONS> options{};
    METIS_SetDefaultOptions(options.data());
    options[METIS_OPTION_SEED] = 1;
    options[METIS_OPTION_NUMBERING] = 0;
    options[METIS_OPTION_CONTIG] = 0;
    auto cells = static_cast<idx_t>(graph.weights.size());
    idx_t constraints = 1;
    idx_t count = parts;
    idx_t cutEdges = 0;
    std::vector<int> part(graph.weights.size());

    const TerminationHeld held;
    const int code = METIS_PartGraphKway(
        &cells, &constraints, graph.offsets.data(), graph.neighbours.data(), graph.weights.data(),
        nullptr, nullptr, &count, nullptr, nullptr, options.data(), &cutEdges, part.data());
    if (code == METIS_ERROR_MEMORY) throw std::bad_alloc();
    if (code != METIS_OK)
        throw RunError("METIS cannot cut the mesh into " + std::to_string(parts) + " parts (code " +
                       std::to_string(code) + ")");
    return part;
}

}  // namespace

std::vector<int> cutMesh(const CellMesh& mesh, int parts) {
    const int cells = mesh.cellCount();
    std::vector<int> part(static_cast<std::size_t>(cells), 0);
    if (parts <= 1) return part;
    if (parts >= cells) {
        std::iota(part.begin(), part.end(), 0);
        return part;
    }
    DualGraph graph = dualGraph(mesh);
    return cutGraph(graph, parts);
}

}  // namespace weldline
