// Hostile meshes: the bytes build cells out of few points, so that cells collapse, share faces by
// three, lie inside out or apart; coordinates and fill times are whatever bytes make of them. The
// mesh is built, bound and run through the library with settings that the bytes choose.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "MeshPromises.h"
#include "Target.h"
#include "base/Errors.h"
#include "bind/Analysis.h"
#include "bind/FillTime.h"
#include "bind/HostModel.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"
#include "results/FlowDirection.h"
#include "results/WeldLines.h"

namespace {

using namespace weldline;
using fuzz::Bytes;

constexpr int maxPoints = 40;
constexpr int maxCells = 24;

double extreme(Bytes& bytes) {
    constexpr std::array values{0.0,
                                -0.0,
                                1e-308,
                                5e-324,
                                1e30,
                                -1e150,
                                1.7e308,
                                1e-30,
                                9.9e-31,
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()};
    return values[static_cast<std::size_t>(bytes.below(values.size()))];
}

// Mostly places of a coarse grid, seldom anything.
double coordinate(Bytes& bytes) {
    const int byte = bytes.next();
    if (byte == 255) return extreme(bytes);
    return byte < 192 ? byte % 4 : byte / 64.0;
}

// A box of 2 x 2 x 2 points and more that the bytes move or add.
std::vector<Vec3> points(Bytes& bytes) {
    std::vector<Vec3> list;
    const int layers = 2 + bytes.below(4);
    for (int x = 0; x < layers; ++x)
        for (int i = 0; i < 4; ++i) list.push_back({1.0 * x, 1.0 * (i % 2), 1.0 * (i / 2)});
    for (int moved = bytes.below(8); moved > 0; --moved) {
        const Vec3 place{coordinate(bytes), coordinate(bytes), coordinate(bytes)};
        const auto which = static_cast<std::size_t>(bytes.below(maxPoints));
        if (which < list.size())
            list[which] = place;
        else
            list.push_back(place);
    }
    return list;
}

int anyNode(Bytes& bytes, const CellMesh& mesh) {
    const int byte = bytes.next();
    // One number in a while that no point has.
    return byte == 255 ? static_cast<int>(mesh.points.size())
                       : byte % static_cast<int>(mesh.points.size());
}

void addCell(CellMesh& mesh, CellKind kind, const std::vector<int>& nodes) {
    mesh.kinds.push_back(kind);
    mesh.cellNodes.append(nodes);
    mesh.cellPolygons.append({});
}

// A hexahedron between two layers of four points, as it should be.
void addGoodCell(CellMesh& mesh, int layer) {
    const int p = 4 * layer;
    if (p + 8 <= static_cast<int>(mesh.points.size()))
        addCell(mesh, CellKind::Hexahedron, {p, p + 4, p + 5, p + 1, p + 2, p + 6, p + 7, p + 3});
}

void addFixedShape(CellMesh& mesh, Bytes& bytes) {
    constexpr std::array nodes{4, 5, 6, 8};
    const int kind = bytes.below(4);
    std::vector<int> list;
    for (int i = nodes[static_cast<std::size_t>(kind)]; i > 0; --i)
        list.push_back(anyNode(bytes, mesh));
    addCell(mesh, static_cast<CellKind>(kind), list);
}

void addPolyhedron(CellMesh& mesh, Bytes& bytes) {
    std::vector<int> nodes;
    for (int faces = bytes.below(9); faces > 0; --faces) {
        std::vector<int> corners;
        for (int left = bytes.below(7); left > 0; --left) corners.push_back(anyNode(bytes, mesh));
        for (const int node : corners)
            if (std::find(nodes.begin(), nodes.end(), node) == nodes.end()) nodes.push_back(node);
        mesh.cellPolygons.entries.push_back(mesh.polygons.count());
        mesh.polygons.append(corners);
    }
    addCell(mesh, CellKind::Polyhedron, nodes);
}

// A good cell as a polyhedron of its six sides, some of them turned over.
void addGoodPolyhedron(CellMesh& mesh, int layer, int turned) {
    constexpr int sides[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                 {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
    const int p = 4 * layer;
    if (p + 8 > static_cast<int>(mesh.points.size())) return;
    for (int s = 0; s < 6; ++s) {
        std::vector<int> corners;
        for (const int corner : sides[s]) corners.push_back(p + corner);
        if (((turned >> s) & 1) != 0) std::reverse(corners.begin(), corners.end());
        mesh.cellPolygons.entries.push_back(mesh.polygons.count());
        mesh.polygons.append(corners);
    }
    addCell(mesh, CellKind::Polyhedron, {p, p + 1, p + 2, p + 3, p + 4, p + 5, p + 6, p + 7});
}

CellMesh cellMesh(Bytes& bytes) {
    CellMesh mesh;
    mesh.points = points(bytes);
    for (int left = bytes.below(maxCells); left > 0; --left) {
        const int byte = bytes.next();
        switch (byte % 8) {
            case 0:
                addFixedShape(mesh, bytes);
                break;
            case 1:
                addPolyhedron(mesh, bytes);
                break;
            case 2:
                addGoodPolyhedron(mesh, (byte / 8) % 4, bytes.next());
                break;
            default:
                addGoodCell(mesh, (byte / 8) % 8);
        }
    }
    return mesh;
}

// Boundary faces by their nodes, and now and then nodes of no face.
std::vector<Patch> patches(Bytes& bytes, const FvMesh& mesh) {
    constexpr std::array names{"gate", "vent", "symmetry", "walls"};
    std::vector<Patch> list;
    for (int left = bytes.below(4); left > 0; --left) {
        list.push_back({names[static_cast<std::size_t>(bytes.below(4))], {}});
        for (int faces = bytes.below(5); faces > 0 && mesh.faceCount() > 0; --faces)
            list.back().faces.append(mesh.faceNodes[bytes.next() % mesh.faceCount()]);
    }
    return list;
}

std::vector<double> fillTimes(Bytes& bytes, int cells) {
    std::vector<double> times;
    for (int c = 0; c < cells; ++c) {
        const int byte = bytes.next();
        times.push_back(byte == 255 ? extreme(bytes) : byte / 16.0);
    }
    return times;
}

std::string controlText(Bytes& bytes) {
    std::string text = "[WeldLinePlotCtrl]\n";
    const auto add = [&](const char* key, double value) {
        text += std::string(key) + " = " + std::to_string(value) + "\n";
    };
    add("WeldlingAngleMethod", bytes.below(6));
    add("GradMethodMFT", bytes.below(6));
    add("nSmooth_beforeGrad", bytes.below(4));
    add("nSmooth_afterGrad", bytes.below(6));
    add("nGrad", bytes.below(8) - 1);
    if (bytes.below(2) == 1) add("BoundaryAngle", bytes.next() - 20);
    if (bytes.below(2) == 1) add("GradValueFilterPara", bytes.next() / 64.0);
    if (bytes.below(2) == 1) add("VolumeFilter", bytes.next() / 128.0);
    if (bytes.below(2) == 1) add("TruncateAngle", 0);
    return text + "[/WeldLinePlotCtrl]\n";
}

// Every node has 180 or an angle below it; exact head-on meetings give a rounding error below 0.
// Values beyond the range of numbers on the way give no number.
void checkAngles(const std::vector<double>& angles, const FvMesh& mesh) {
    fuzz::require(angles.size() == mesh.points.size(), "every node has an angle");
    for (const double angle : angles)
        fuzz::require(std::isnan(angle) || (angle >= -1e-6 && angle <= 180.0), "angles in range");
}

void run(const CellMesh& cells, Bytes& bytes) {
    const FvMesh mesh = buildFvMesh(cells);
    fuzz::checkMesh(mesh);
    const BoundaryGroups groups = groupBoundaryFaces(mesh, patches(bytes, mesh), GroupPatterns{});
    fuzz::checkGroups(mesh, groups);
    HostOptions options;
    options.controlFile = fuzz::scratchFolder() + "/run.cmp";
    fuzz::writeBytes(options.controlFile, controlText(bytes));
    options.meshFileType = bytes.below(3);
    options.gradientSetSwitch = bytes.below(2);
    const auto zero = static_cast<ZeroFillTime>(bytes.below(3));
    const bool hasStates = bytes.below(2) == 1;
    const bool isBiInjection = bytes.below(2) == 1;
    const FillTime fill = prepareFillTime(fillTimes(bytes, mesh.cellCount()), mesh, groups, zero);
    if (isBiInjection)
        options.biInjection =
            prepareFillTime(fillTimes(bytes, mesh.cellCount()), mesh, groups, zero).values;
    for (int c = 0; hasStates && c < mesh.cellCount(); ++c)
        options.cellState.push_back(bytes.below(4) - 2);
    HostModel model(mesh, groups, fill.values, options);
    const std::vector<double> angles = runWeldLine(model);
    checkAngles(angles, mesh);
    findWeldLines(mesh, angles, fill.values, 180.0);
    fuzz::require(
        flowDirections(mesh, fill.values).size() == static_cast<std::size_t>(mesh.cellCount()),
        "every cell has a flow direction");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    try {
        run(cellMesh(bytes), bytes);
    } catch (const InputError& error) {
        fuzz::require(*error.what() != '\0', "an error says something");
    }
    return 0;
}
