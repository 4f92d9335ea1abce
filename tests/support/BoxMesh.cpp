#include "BoxMesh.h"

namespace weldline::test {

namespace {

struct Box {
    TestHost& host;
    std::array<int, 3> cells;
    double h;
};

Point cellCentre(const Box& box, const std::array<int, 3>& at) {
    return {(at[0] + 0.5) * box.h, (at[1] + 0.5) * box.h, (at[2] + 0.5) * box.h};
}

// The corners in the usual order of a hexahedron: the lower layer counter-clockwise, then the
// upper.
std::vector<int> corners(const Box& box, const std::array<int, 3>& at) {
    constexpr std::array<std::array<int, 3>, 8> steps{
        {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
    std::vector<int> nodes;
    for (const std::array<int, 3>& step : steps)
        nodes.push_back(
            boxNode(box.cells[0], box.cells[1], at[0] + step[0], at[1] + step[1], at[2] + step[2]));
    return nodes;
}

template <class Action>
void forEachCell(const Box& box, const Action& action) {
    for (int k = 0; k < box.cells[2]; ++k)
        for (int j = 0; j < box.cells[1]; ++j)
            for (int i = 0; i < box.cells[0]; ++i) action(std::array<int, 3>{i, j, k});
}

int number(const Box& box, const std::array<int, 3>& at) {
    return boxCell(box.cells[0], box.cells[1], at[0], at[1], at[2]);
}

void addInnerFaces(const Box& box, const std::array<int, 3>& at) {
    for (int axis = 0; axis < 3; ++axis) {
        if (at[axis] + 1 == box.cells[axis]) continue;
        std::array<int, 3> next = at;
        ++next[axis];
        Point area{};
        area[axis] = box.h * box.h;
        Point centre = cellCentre(box, at);
        centre[axis] = (at[axis] + 1) * box.h;
        box.host.addInner(number(box, at), number(box, next), area, centre);
    }
}

void addBoundaryFaces(const Box& box, const std::array<int, 3>& at, const GroupOf& groupOf) {
    for (int axis = 0; axis < 3; ++axis)
        for (int side = 0; side < 2; ++side) {
            if (at[axis] != (side == 0 ? 0 : box.cells[axis] - 1)) continue;
            const double sign = side == 0 ? -1.0 : 1.0;
            Point normal{};
            normal[axis] = sign;
            Point area{};
            area[axis] = sign * box.h * box.h;
            Point centre = cellCentre(box, at);
            centre[axis] = (at[axis] + side) * box.h;
            const std::optional<Group> group = groupOf(normal, centre);
            if (group) box.host.addBoundary(*group, number(box, at), area, centre);
        }
}

}  // namespace

std::optional<Group> wallEverywhere(Point, Point) {
    return Group::Wall;
}

int boxCell(int nx, int ny, int i, int j, int k) {
    return 1 + i + nx * (j + ny * k);
}

int boxNode(int nx, int ny, int i, int j, int k) {
    return 1 + i + (nx + 1) * (j + (ny + 1) * k);
}

void setField(TestHost& host, const std::function<double(Point)>& field) {
    const CKVR3DFiniteVolumeMesh& mesh = *host.mesh();
    const int boundary =
        mesh.m_nWallFace + mesh.m_nInletFace + mesh.m_nOutletFace + mesh.m_nSymmFace;
    const auto valueAt = [&](int slot) {
        return static_cast<float>(field({mesh.m_pXc[slot], mesh.m_pYc[slot], mesh.m_pZc[slot]}));
    };
    for (int c = 1; c <= mesh.m_nCV; ++c) host.setValue(c, valueAt(c));
    for (int s = mesh.m_nCV + boundary + 1; s <= mesh.m_nCV_Total; ++s)
        host.setValue(s, valueAt(s));
    const auto fillGroup = [&](int count, const int* cell, const int* slot) {
        for (int f = 1; f <= count; ++f) host.setValue(slot[f], valueAt(cell[f]));
    };
    fillGroup(mesh.m_nWallFace, mesh.m_pWallFaceCV, mesh.m_pWallFaceBnd);
    fillGroup(mesh.m_nInletFace, mesh.m_pInletFaceCV, mesh.m_pInletFaceBnd);
    fillGroup(mesh.m_nSymmFace, mesh.m_pSymmFaceCV, mesh.m_pSymmFaceBnd);
}

void addBox(TestHost& host, int nx, int ny, int nz, double h, const GroupOf& groupOf) {
    const Box box{host, {nx, ny, nz}, h};
    for (int k = 0; k <= nz; ++k)
        for (int j = 0; j <= ny; ++j)
            for (int i = 0; i <= nx; ++i) host.addNode({i * h, j * h, k * h});
    forEachCell(box, [&](const std::array<int, 3>& at) {
        host.addCell(cellCentre(box, at), h * h * h, corners(box, at));
    });
    forEachCell(box, [&](const std::array<int, 3>& at) { addInnerFaces(box, at); });
    forEachCell(box, [&](const std::array<int, 3>& at) { addBoundaryFaces(box, at, groupOf); });
}

}  // namespace weldline::test
