#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "PairJudge.h"

namespace weldline {

// A cell that contains the node.
struct CellAtNode {
    int cell = 0;
    double fillTime = 0.0;  // exactly 0 where the melt did not come
    Vec3 centre;
    Vec3 gradient;  // the one that the method compares
    bool isFlat = false;
    int boundaryFaces = 0;  // with the node; nothing lies behind them that could meet
};

// Two cells at the node that the method compares.
struct PairAtNode {
    int a = 0;  // below b
    int b = 0;
    int face = -1;  // the one they share; -1: the method compares them at the node
    Vec3 point;     // where they are compared
    Judgement judgement;
    bool isKept = false;  // its angle is the node's
};

// How the node came to its angle.
enum class NodeVerdict : std::uint8_t {
    Kept,          // the pair that meets most head-on decides
    NothingMeets,  // every pair is refused: 180
    AboveLimit,    // a pair meets, but at no smaller angle than the limit: 180
    Isolated,      // a pair meets, but no node beside it has an angle below the limit: 180
    Different      // the pairs do not explain the library's angle
};

struct NodeExplanation {
    int node = 0;
    Vec3 place;
    double angle = 180.0;      // of the library; degrees
    double pairAngle = 180.0;  // of the kept pair
    double limit = 180.0;      // TruncateAngle
    NodeVerdict verdict = NodeVerdict::NothingMeets;
    std::vector<CellAtNode> cells;  // ascending
    std::vector<PairAtNode> pairs;  // in the order in which the method comes to them
};

// Whether the pair tests of an angle method are known: 1, 2 and 4.
bool canExplain(int angleMethod);

// Tells of nodes why they have their angles. Borrows mesh and fields.
class NodeExplainer {
  public:
    NodeExplainer(const FvMesh& mesh, const LibraryFields& fields, const Settings& settings,
                  int meshFileType);

    // `angle` is the one that the library calculated.
    NodeExplanation explain(int node, double angle) const;

  private:
    std::vector<CellAtNode> cellsAt(int node) const;

    const FvMesh& m_mesh;
    const LibraryFields& m_fields;
    int m_method;
    double m_limit;
    Rows m_nodeCells;  // per node the cells that contain it, ascending
    std::unique_ptr<PairJudge> m_judge;
};

// The node nearest to a place; of equally near ones the first.
int nearestNode(const FvMesh& mesh, Vec3 place);

// One sentence each.
std::string describe(const NodeExplanation& explanation);
std::string describe(const PairAtNode& pair);

}  // namespace weldline
