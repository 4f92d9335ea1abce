#include "TestHost.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace weldline::test {

namespace {

constexpr int kPoison = -987654321;

int groupType(Group group) {
    return 1 + static_cast<int>(group);
}

}  // namespace

TestHost::TestHost() {
    std::string name = (std::filesystem::temp_directory_path() / "weldline-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    m_directory = name;
    setControlPath(m_directory + "/run.cmp");
    m_gv.m_pMeshFilePath = "part.q7f";
    m_gv.m_pProcessNumber = &processNumber;
    m_gv.m_pAnalysisMode = &analysisMode;
    m_gv.m_pGradSetSwitch = &gradSetSwitch;
}

TestHost::~TestHost() {
    std::filesystem::remove_all(m_directory);
}

int TestHost::addNode(Point position) {
    m_nodes.push_back(position);
    return static_cast<int>(m_nodes.size());
}

int TestHost::addCell(Point centre, double volume, std::vector<int> nodes) {
    m_centres.push_back(centre);
    m_volumes.push_back(volume);
    m_cellNodes.push_back(std::move(nodes));
    m_cellNeighbours.emplace_back();
    return static_cast<int>(m_centres.size());
}

int TestHost::addInner(int firstCell, int secondCell, Point area, Point centre, double lambda) {
    m_inner.push_back({NaN, static_cast<double>(firstCell), static_cast<double>(secondCell),
                       area[0], area[1], area[2], centre[0], centre[1], centre[2]});
    m_lambda.push_back(lambda);
    addNeighbour(firstCell, secondCell);
    addNeighbour(secondCell, firstCell);
    return static_cast<int>(m_inner.size());
}

int TestHost::addBoundary(Group group, int cell, Point area, Point centre) {
    m_boundary.push_back({group, cell, area, centre});
    int number = 0;
    for (const BoundaryFace& face : m_boundary) number += face.group == group ? 1 : 0;
    return number;
}

int TestHost::addInterface(int cell, Point area, Point centre, double lambda, Point haloCentre,
                           double haloVolume, std::vector<int> nodes) {
    m_interface.push_back({cell, area, centre, haloCentre, lambda, haloVolume, std::move(nodes)});
    return static_cast<int>(m_interface.size());
}

void TestHost::setInnerCells(int face, double first, double second) {
    m_inner[face - 1][1] = first;
    m_inner[face - 1][2] = second;
    if (m_mesh.m_ppInnerFace != nullptr) {
        m_mesh.m_ppInnerFace[face][1] = first;
        m_mesh.m_ppInnerFace[face][2] = second;
    }
}

void TestHost::addNeighbour(int cell, int neighbour) {
    m_cellNeighbours[cell - 1].push_back(neighbour);
}

double* TestHost::reals(std::size_t slots, double value) {
    std::shared_ptr<double[]> array(new double[slots + 1]);
    std::fill_n(array.get(), slots + 1, value);
    array[0] = NaN;
    m_memory.push_back(array);
    return array.get();
}

int* TestHost::ints(std::size_t slots, int value) {
    std::shared_ptr<int[]> array(new int[slots + 1]);
    std::fill_n(array.get(), slots + 1, value);
    array[0] = kPoison;
    m_memory.push_back(array);
    return array.get();
}

int** TestHost::rowTable(const std::vector<std::vector<int>>& rows) {
    std::shared_ptr<int*[]> table(new int*[rows.size() + 1]);
    m_memory.push_back(table);
    table[0] = nullptr;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        int* row = ints(rows[i].size(), 0);
        row[0] = static_cast<int>(rows[i].size());
        std::copy(rows[i].begin(), rows[i].end(), row + 1);
        table[i + 1] = row;
    }
    return table.get();
}

void TestHost::finish() {
    finishCells();
    finishInnerFaces();
    finishGroup(Group::Wall, m_mesh.m_nWallFace,
                {&m_mesh.m_pWallFaceXc, &m_mesh.m_pWallFaceYc, &m_mesh.m_pWallFaceZc,
                 &m_mesh.m_pWallFaceSx, &m_mesh.m_pWallFaceSy, &m_mesh.m_pWallFaceSz},
                &m_mesh.m_pWallFaceCV, &m_mesh.m_pWallFaceBnd);
    finishGroup(Group::Inlet, m_mesh.m_nInletFace,
                {&m_mesh.m_pInletFaceXc, &m_mesh.m_pInletFaceYc, &m_mesh.m_pInletFaceZc,
                 &m_mesh.m_pInletFaceSx, &m_mesh.m_pInletFaceSy, &m_mesh.m_pInletFaceSz},
                &m_mesh.m_pInletFaceCV, &m_mesh.m_pInletFaceBnd);
    finishGroup(Group::Outlet, m_mesh.m_nOutletFace,
                {&m_mesh.m_pOutletFaceXc, &m_mesh.m_pOutletFaceYc, &m_mesh.m_pOutletFaceZc,
                 &m_mesh.m_pOutletFaceSx, &m_mesh.m_pOutletFaceSy, &m_mesh.m_pOutletFaceSz},
                &m_mesh.m_pOutletFaceCV, &m_mesh.m_pOutletFaceBnd);
    finishGroup(Group::Symm, m_mesh.m_nSymmFace,
                {&m_mesh.m_pSymmFaceXc, &m_mesh.m_pSymmFaceYc, &m_mesh.m_pSymmFaceZc,
                 &m_mesh.m_pSymmFaceSx, &m_mesh.m_pSymmFaceSy, &m_mesh.m_pSymmFaceSz},
                &m_mesh.m_pSymmFaceCV, &m_mesh.m_pSymmFaceBnd);
    finishInterface();
    finishCellFaces();
}

void TestHost::finishCells() {
    const int cells = static_cast<int>(m_centres.size());
    m_mesh.m_nCV = cells;
    m_mesh.m_nCV_Total = cells + static_cast<int>(m_boundary.size() + m_interface.size());
    m_mesh.m_nNode = static_cast<int>(m_nodes.size());
    m_mesh.m_nCountAux = 77;

    double* columns[] = {m_mesh.m_pXc = reals(slots(), NaN), m_mesh.m_pYc = reals(slots(), NaN),
                         m_mesh.m_pZc = reals(slots(), NaN)};
    m_mesh.m_pVolume = reals(slots(), NaN);
    m_gv.m_pCellState = ints(cells, 0);
    std::shared_ptr<float[]> values(new float[slots() + 1]);
    std::fill_n(values.get(), slots() + 1, 1.0F);
    values[0] = std::numeric_limits<float>::quiet_NaN();
    m_memory.push_back(values);
    m_gv.m_pFlowVariable = values.get();
    for (int c = 1; c <= cells; ++c) {
        for (int axis = 0; axis < 3; ++axis) columns[axis][c] = m_centres[c - 1][axis];
        m_mesh.m_pVolume[c] = m_volumes[c - 1];
    }

    double* node[] = {m_mesh.m_pNodeX = reals(m_nodes.size(), NaN),
                      m_mesh.m_pNodeY = reals(m_nodes.size(), NaN),
                      m_mesh.m_pNodeZ = reals(m_nodes.size(), NaN)};
    for (std::size_t n = 0; n < m_nodes.size(); ++n)
        for (int axis = 0; axis < 3; ++axis) node[axis][n + 1] = m_nodes[n][axis];
    m_mesh.m_ppCellNode = rowTable(m_cellNodes);
    m_mesh.m_ppCellNeighbour = rowTable(m_cellNeighbours);
}

void TestHost::finishInnerFaces() {
    m_mesh.m_nInnerFace = static_cast<int>(m_inner.size());
    std::shared_ptr<double*[]> rows(new double*[m_inner.size() + 1]);
    m_memory.push_back(rows);
    rows[0] = nullptr;
    m_mesh.m_pInnerFaceLambda = reals(m_inner.size(), NaN);
    for (std::size_t f = 0; f < m_inner.size(); ++f) {
        rows[f + 1] = reals(8, NaN);
        std::copy(m_inner[f].begin(), m_inner[f].end(), rows[f + 1]);
        m_mesh.m_pInnerFaceLambda[f + 1] = m_lambda[f];
    }
    m_mesh.m_ppInnerFace = rows.get();
}

void TestHost::finishGroup(Group group, int& count, std::array<double**, 6> columns, int** cell,
                           int** slot) {
    std::vector<std::size_t> members;
    for (std::size_t i = 0; i < m_boundary.size(); ++i)
        if (m_boundary[i].group == group) members.push_back(i);
    count = static_cast<int>(members.size());
    for (double** column : columns) *column = reals(members.size(), NaN);
    *cell = ints(members.size(), 0);
    *slot = ints(members.size(), 0);
    for (std::size_t i = 0; i < members.size(); ++i) {
        const BoundaryFace& face = m_boundary[members[i]];
        for (int axis = 0; axis < 3; ++axis) {
            (*columns[axis])[i + 1] = face.centre[axis];
            (*columns[3 + axis])[i + 1] = face.area[axis];
        }
        (*cell)[i + 1] = face.cell;
        (*slot)[i + 1] = m_mesh.m_nCV + static_cast<int>(members[i]) + 1;
        if (group == Group::Outlet)
            m_gv.m_pFlowVariable[(*slot)[i + 1]] = std::numeric_limits<float>::quiet_NaN();
    }
}

void TestHost::finishInterface() {
    const std::size_t faces = m_interface.size();
    m_parCell = ints(faces, 0);
    m_parHalo = ints(faces, 0);
    for (double*& column : m_par) column = reals(faces, NaN);
    std::vector<std::vector<int>> nodes;
    double* centre[] = {m_mesh.m_pXc, m_mesh.m_pYc, m_mesh.m_pZc};
    for (std::size_t i = 0; i < faces; ++i) {
        const InterfaceFace& face = m_interface[i];
        const int halo = haloSlot(static_cast<int>(i) + 1);
        m_parCell[i + 1] = face.cell;
        m_parHalo[i + 1] = halo;
        for (int axis = 0; axis < 3; ++axis) {
            m_par[axis][i + 1] = face.area[axis];
            m_par[3 + axis][i + 1] = face.centre[axis];
            centre[axis][halo] = face.haloCentre[axis];
        }
        m_par[6][i + 1] = face.lambda;
        m_mesh.m_pVolume[halo] = face.haloVolume;
        nodes.push_back(face.nodes);
    }
    m_mesh.m_ppParFaceNode = rowTable(nodes);
}

// Per cell: inner faces, then interface faces, then boundary faces, each in ascending number.
void TestHost::finishCellFaces() {
    std::vector<std::vector<int>> faces(m_centres.size());
    std::vector<std::vector<int>> types(m_centres.size());
    const auto add = [&](int cell, int face, int type) {
        if (cell < 1 || cell > m_mesh.m_nCV) return;
        faces[cell - 1].push_back(face);
        types[cell - 1].push_back(type);
    };
    for (std::size_t f = 0; f < m_inner.size(); ++f) {
        add(static_cast<int>(m_inner[f][1]), static_cast<int>(f) + 1, 0);
        add(static_cast<int>(m_inner[f][2]), static_cast<int>(f) + 1, 0);
    }
    for (std::size_t i = 0; i < m_interface.size(); ++i)
        add(m_interface[i].cell, static_cast<int>(i) + 1, 101);
    std::array<int, 4> number{};
    for (const BoundaryFace& face : m_boundary)
        add(face.cell, ++number[static_cast<int>(face.group)], groupType(face.group));
    m_mesh.m_ppCellFace = rowTable(faces);
    m_mesh.m_ppCellFaceType = rowTable(types);
}

int TestHost::boundarySlot(Group group, int face) const {
    int number = 0;
    for (std::size_t i = 0; i < m_boundary.size(); ++i)
        if (m_boundary[i].group == group && ++number == face)
            return m_mesh.m_nCV + static_cast<int>(i) + 1;
    std::abort();
}

int TestHost::haloSlot(int interfaceFace) const {
    return m_mesh.m_nCV + static_cast<int>(m_boundary.size()) + interfaceFace;
}

void TestHost::setValue(int slot, float value) {
    m_gv.m_pFlowVariable[slot] = value;
}

void TestHost::setState(int cell, int state) {
    m_gv.m_pCellState[cell] = state;
}

void TestHost::setControl(const std::string& text) {
    std::ofstream(m_controlPath, std::ios::binary) << text;
}

void TestHost::setControlPath(const std::string& path) {
    m_controlPath = path;
    m_gv.m_pControlFilePath = m_controlPath.c_str();
}

std::string TestHost::tracePath() const {
    return m_controlPath.substr(0, m_controlPath.rfind('.')) + "_KVRWDLineDebug.txt";
}

std::string TestHost::readFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

bool TestHost::fileExists(const std::string& path) {
    return std::filesystem::exists(path);
}

}  // namespace weldline::test
