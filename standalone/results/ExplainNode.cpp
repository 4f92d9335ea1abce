#include "ExplainNode.h"

#include <algorithm>
#include <numeric>

namespace weldline {

namespace {

bool contains(std::span<const int> members, int member) {
    return std::find(members.begin(), members.end(), member) != members.end();
}

// Per node the cells that contain it, ascending.
Rows cellsOfNodes(const FvMesh& mesh) {
    Rows rows;
    rows.offsets.assign(mesh.points.size() + 1, 0);
    for (const int node : mesh.cellNodes.entries)
        ++rows.offsets[static_cast<std::size_t>(node) + 1];
    std::partial_sum(rows.offsets.begin(), rows.offsets.end(), rows.offsets.begin());
    rows.entries.resize(mesh.cellNodes.entries.size());
    std::vector<std::int64_t> next(rows.offsets.begin(), rows.offsets.end() - 1);
    for (int c = 0; c < mesh.cellCount(); ++c)
        for (const int node : mesh.cellNodes[c])
            rows.entries[static_cast<std::size_t>(next[static_cast<std::size_t>(node)]++)] = c;
    return rows;
}

PairAtNode pairOf(int a, int b, int face, Vec3 point) {
    PairAtNode pair;
    pair.a = a;
    pair.b = b;
    pair.face = face;
    pair.point = point;
    return pair;
}

// Method 1: every two cells, at the node.
std::vector<PairAtNode> allPairs(const std::vector<CellAtNode>& cells, Vec3 node) {
    std::vector<PairAtNode> pairs;
    for (std::size_t i = 0; i < cells.size(); ++i)
        for (std::size_t j = i + 1; j < cells.size(); ++j)
            pairs.push_back(pairOf(cells[i].cell, cells[j].cell, -1, node));
    return pairs;
}

// Methods 2 and 4: every two cells that share a face, at its centre. The library asks that both
// contain the node; the face need not.
std::vector<PairAtNode> facePairs(const FvMesh& mesh, const std::vector<CellAtNode>& cells) {
    std::vector<PairAtNode> pairs;
    for (const CellAtNode& cell : cells)
        for (const int f : mesh.cellFaces[cell.cell]) {
            if (f >= mesh.innerFaces || mesh.owner[f] != cell.cell) continue;
            const int b = mesh.neighbour[f];
            if (std::any_of(cells.begin(), cells.end(),
                            [&](const CellAtNode& other) { return other.cell == b; }))
                pairs.push_back(pairOf(cell.cell, b, f, mesh.faceCentre[f]));
        }
    return pairs;
}

// The library comes to a pair of neighbours from either cell, and rounding may tell the two ways
// apart.
Judgement judgeBothWays(const PairJudge& judge, const PairAtNode& pair) {
    Judgement judgement = judge.judge(pair.a, pair.b, pair.point);
    if (judgement.refusal == Refusal::None || pair.face < 0) return judgement;
    const Judgement back = judge.judge(pair.b, pair.a, pair.point);
    return back.refusal == Refusal::None ? back : judgement;
}

// The largest angle between gradients is kept; of equal ones the first, and none that is 0.
double keepLargest(std::vector<PairAtNode>& pairs) {
    double largest = 0.0;
    PairAtNode* kept = nullptr;
    for (PairAtNode& pair : pairs) {
        if (pair.judgement.refusal != Refusal::None || !(pair.judgement.angle > largest)) continue;
        largest = pair.judgement.angle;
        kept = &pair;
    }
    if (kept != nullptr) kept->isKept = true;
    return largest;
}

NodeVerdict verdictOf(const NodeExplanation& e) {
    const bool isMet = std::any_of(e.pairs.begin(), e.pairs.end(),
                                   [](const PairAtNode& pair) { return pair.isKept; });
    constexpr double nothing = 180.0;
    if (!isMet) return e.angle == nothing ? NodeVerdict::NothingMeets : NodeVerdict::Different;
    if (e.angle == e.pairAngle && e.pairAngle < e.limit) return NodeVerdict::Kept;
    if (e.angle != nothing) return NodeVerdict::Different;
    return e.pairAngle >= e.limit ? NodeVerdict::AboveLimit : NodeVerdict::Isolated;
}

}  // namespace

bool canExplain(int angleMethod) {
    return angleMethod == 1 || angleMethod == 2 || angleMethod == 4;
}

NodeExplainer::NodeExplainer(const FvMesh& mesh, const LibraryFields& fields,
                             const Settings& settings, int meshFileType)
    : m_mesh(mesh),
      m_fields(fields),
      m_method(settings.method),
      m_limit(settings.truncateAngle),
      m_nodeCells(cellsOfNodes(mesh)),
      m_judge(settings.method == 4 ? convergingPairs(mesh, fields, settings)
                                   : meetingPairs(mesh, fields, settings, meshFileType)) {}

NodeExplanation NodeExplainer::explain(int node, double angle) const {
    NodeExplanation e;
    e.node = node;
    e.place = m_mesh.points[static_cast<std::size_t>(node)];
    e.angle = angle;
    e.limit = m_limit;
    e.cells = cellsAt(node);
    e.pairs = m_method == 1 ? allPairs(e.cells, e.place) : facePairs(m_mesh, e.cells);
    for (PairAtNode& pair : e.pairs) pair.judgement = judgeBothWays(*m_judge, pair);
    e.pairAngle = 180.0 - keepLargest(e.pairs);
    e.verdict = verdictOf(e);
    return e;
}

std::vector<CellAtNode> NodeExplainer::cellsAt(int node) const {
    std::vector<CellAtNode> cells;
    for (const int c : m_nodeCells[node]) {
        CellAtNode cell{c, m_fields.fillTime[c], m_mesh.cellCentre[c], m_fields.gradient[c]};
        cell.isFlat = isFlat(m_fields, c);
        for (const int f : m_mesh.cellFaces[c])
            if (f >= m_mesh.innerFaces && contains(m_mesh.faceNodes[f], node)) ++cell.boundaryFaces;
        cells.push_back(cell);
    }
    return cells;
}

int nearestNode(const FvMesh& mesh, Vec3 place) {
    const auto nearest =
        std::min_element(mesh.points.begin(), mesh.points.end(),
                         [&](Vec3 a, Vec3 b) { return norm(a - place) < norm(b - place); });
    return static_cast<int>(nearest - mesh.points.begin());
}

}  // namespace weldline
