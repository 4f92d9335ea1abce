#include "HostModel.h"

#include <numeric>
#include <utility>

#include "base/Errors.h"
#include "comm/Agreement.h"

namespace weldline {

namespace {

constexpr int boundaryGroups = 4;

// What lies behind a face of a cell: a cell slot, or 0 behind a boundary face.
int slotAcross(const FvMesh& mesh, const int* haloSlot, int face, int cell) {
    const int firstInterface = mesh.firstInterfaceFace();
    if (face < mesh.innerFaces)
        return (mesh.owner[face] == cell ? mesh.neighbour[face] : mesh.owner[face]) + 1;
    return face < firstInterface ? 0 : haloSlot[face - firstInterface + 1];
}

int typeOf(const FvMesh& mesh, const BoundaryGroups& groups, int face) {
    if (face < mesh.innerFaces) return HostModel::innerFace;
    if (face >= mesh.firstInterfaceFace()) return HostModel::interfaceFace;
    return HostModel::boundaryFaceType[static_cast<int>(groups.kinds[face - mesh.innerFaces])];
}

void checkControlFile(const std::string& path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    if (name.find('.') == std::string::npos)
        throw UsageError("control file '" + path +
                         "': the name needs an ending such as .cmp, because the trace file takes "
                         "its name from what stands before the ending");
}

void checkSize(const char* what, std::size_t size, const FvMesh& mesh) {
    if (size == static_cast<std::size_t>(mesh.cellCount())) return;
    throw InputError(std::string(what) + " has " + std::to_string(size) +
                     " values, but the mesh has " + std::to_string(mesh.cellCount()) + " cells");
}

// Number of each face within its kind, from 1: inner faces, each boundary group on its own, and
// interface faces.
std::vector<int> numbersWithinKind(const FvMesh& mesh, const BoundaryGroups& groups) {
    std::vector<int> number(mesh.faceCount());
    std::iota(number.begin(), number.begin() + mesh.innerFaces, 1);
    std::iota(number.begin() + mesh.firstInterfaceFace(), number.end(), 1);
    std::array<int, boundaryGroups> count{};
    for (int i = 0; i < mesh.boundaryFaces(); ++i)
        number[mesh.innerFaces + i] = ++count[static_cast<int>(groups.kinds[i])];
    return number;
}

// A value per cell slot from a value per cell: boundary slots take their own cell's value, halo
// slots that of the true cell. Collective.
std::vector<float> overSlots(const FvMesh& mesh, const std::vector<float>& cells,
                             const RankPart& part) {
    std::vector<float> slots{0.0F};
    slots.insert(slots.end(), cells.begin(), cells.end());
    for (int i = 0; i < mesh.boundaryFaces(); ++i)
        slots.push_back(cells[mesh.owner[mesh.innerFaces + i]]);
    const std::vector<float> halo = haloValues(part.ranks, part.interface, cells);
    slots.insert(slots.end(), halo.begin(), halo.end());
    return slots;
}

}  // namespace

void HostModel::Column3::resize(std::size_t slots) {
    for (std::vector<double>* column : {&x, &y, &z}) column->assign(slots, 0.0);
}

void HostModel::Column3::set(std::size_t slot, Vec3 v) {
    x[slot] = v.x;
    y[slot] = v.y;
    z[slot] = v.z;
}

HostModel::HostModel(const FvMesh& mesh, const BoundaryGroups& groups,
                     const std::vector<float>& fillTime, HostOptions options)
    : HostModel(mesh, groups, fillTime, std::move(options), UncutMesh(mesh.pointCount()).part()) {}

HostModel::HostModel(const FvMesh& mesh, const BoundaryGroups& groups,
                     const std::vector<float>& fillTime, HostOptions options, const RankPart& part)
    : m_options(std::move(options)),
      m_processNumber(part.ranks.rank()),
      m_partitionFaces(mesh, part.interface) {
    together(part.ranks, [&] { checkInput(mesh, fillTime); });
    bindCells(mesh, part.interface);
    bindNodes(mesh, part.nodeNumber);
    bindInnerFaces(mesh);
    bindGroups(mesh, groups);
    bindGroupPointers();
    bindCellRows(mesh, groups);
    bindInterfaceNodes(mesh);
    bindFlow(mesh, fillTime, part);
}

void HostModel::checkInput(const FvMesh& mesh, const std::vector<float>& fillTime) const {
    checkControlFile(m_options.controlFile);
    checkSize("the fill time", fillTime.size(), mesh);
    if (!m_options.biInjection.empty())
        checkSize("the bi-injection field", m_options.biInjection.size(), mesh);
    if (!m_options.cellState.empty()) checkSize("the cell state", m_options.cellState.size(), mesh);
}

void HostModel::bindCells(const FvMesh& mesh, const MeshInterface& interface) {
    const int cells = mesh.cellCount();
    const int firstHaloSlot = cells + mesh.boundaryFaces() + 1;
    m_mesh.m_nCV = cells;
    m_mesh.m_nCV_Total = firstHaloSlot - 1 + static_cast<int>(interface.halo.size());
    const auto slots = static_cast<std::size_t>(m_mesh.m_nCV_Total) + 1;
    m_centre.resize(slots);
    m_volume.assign(slots, 0.0);
    const auto set = [&](std::size_t slot, Vec3 centre, double volume) {
        m_centre.set(slot, centre);
        m_volume[slot] = volume;
    };
    for (int c = 0; c < cells; ++c) set(c + 1, mesh.cellCentre[c], mesh.cellVolume[c]);
    for (int i = 0; i < mesh.boundaryFaces(); ++i) {
        const int face = mesh.innerFaces + i;
        set(cells + 1 + i, mesh.faceCentre[face], mesh.cellVolume[mesh.owner[face]]);
    }
    for (std::size_t h = 0; h < interface.halo.size(); ++h)
        set(firstHaloSlot + h, interface.halo[h].centre, interface.halo[h].volume);
    m_mesh.m_pXc = m_centre.x.data();
    m_mesh.m_pYc = m_centre.y.data();
    m_mesh.m_pZc = m_centre.z.data();
    m_mesh.m_pVolume = m_volume.data();
}

void HostModel::bindNodes(const FvMesh& mesh, const std::vector<std::int64_t>& nodeNumber) {
    const int nodes = mesh.pointCount();
    m_mesh.m_nNode = nodes;
    m_node.resize(static_cast<std::size_t>(nodes) + 1);
    for (int n = 0; n < nodes; ++n) m_node.set(n + 1, mesh.points[n]);
    m_mesh.m_pNodeX = m_node.x.data();
    m_mesh.m_pNodeY = m_node.y.data();
    m_mesh.m_pNodeZ = m_node.z.data();
    m_globalNode.assign(static_cast<std::size_t>(nodes) + 1, 0);
    // The host's list is of 32-bit numbers; nothing reads it, so that larger ones may wrap.
    for (int n = 0; n < nodes; ++n) m_globalNode[n + 1] = static_cast<int>(nodeNumber[n] + 1);
}

void HostModel::bindInnerFaces(const FvMesh& mesh) {
    constexpr std::size_t width = 9;  // element 0 means nothing
    const auto faces = static_cast<std::size_t>(mesh.innerFaces);
    m_mesh.m_nInnerFace = mesh.innerFaces;
    m_innerFace.assign(faces * width, 0.0);
    m_innerFaceRows.assign(faces + 1, nullptr);
    m_lambda.assign(faces + 1, 0.0);
    for (std::size_t f = 0; f < faces; ++f) {
        double* row = m_innerFace.data() + f * width;
        const Vec3 area = mesh.faceArea[f];
        const Vec3 centre = mesh.faceCentre[f];
        const std::array<double, width> record{0.0,
                                               mesh.owner[f] + 1.0,
                                               mesh.neighbour[f] + 1.0,
                                               area.x,
                                               area.y,
                                               area.z,
                                               centre.x,
                                               centre.y,
                                               centre.z};
        std::copy(record.begin(), record.end(), row);
        m_innerFaceRows[f + 1] = row;
        m_lambda[f + 1] = mesh.lambda[f];
    }
    m_mesh.m_ppInnerFace = m_innerFaceRows.data();
    m_mesh.m_pInnerFaceLambda = m_lambda.data();
}

void HostModel::bindGroups(const FvMesh& mesh, const BoundaryGroups& groups) {
    const std::vector<int> number = numbersWithinKind(mesh, groups);
    std::array<std::vector<int>, boundaryGroups> sizes;  // nodes per face
    for (int i = 0; i < mesh.boundaryFaces(); ++i)
        sizes[static_cast<int>(groups.kinds[i])].push_back(
            static_cast<int>(mesh.faceNodes[mesh.innerFaces + i].size()));
    for (int g = 0; g < boundaryGroups; ++g) {
        const std::size_t slots = sizes[g].size() + 1;
        m_groups[g].centre.resize(slots);
        m_groups[g].area.resize(slots);
        m_groups[g].cell.assign(slots, 0);
        m_groups[g].slot.assign(slots, 0);
        m_faceNodes[g] = RowTable(sizes[g]);
    }
    for (int i = 0; i < mesh.boundaryFaces(); ++i) {
        const int face = mesh.innerFaces + i;
        const int g = static_cast<int>(groups.kinds[i]);
        const int k = number[face];
        m_groups[g].centre.set(k, mesh.faceCentre[face]);
        m_groups[g].area.set(k, mesh.faceArea[face]);
        m_groups[g].cell[k] = mesh.owner[face] + 1;
        m_groups[g].slot[k] = mesh.cellCount() + 1 + i;
        int* row = m_faceNodes[g].row(k);
        for (const int node : mesh.faceNodes[face]) *++row = node + 1;
    }
}

void HostModel::bindGroupPointers() {
    using Mesh = CKVR3DFiniteVolumeMesh;
    struct Names {
        int Mesh::*count;
        double *Mesh::*xc, *Mesh::*yc, *Mesh::*zc, *Mesh::*sx, *Mesh::*sy, *Mesh::*sz;
        int *Mesh::*cell, *Mesh::*slot;
    };
    const std::array<Names, boundaryGroups> names{{
        {&Mesh::m_nWallFace, &Mesh::m_pWallFaceXc, &Mesh::m_pWallFaceYc, &Mesh::m_pWallFaceZc,
         &Mesh::m_pWallFaceSx, &Mesh::m_pWallFaceSy, &Mesh::m_pWallFaceSz, &Mesh::m_pWallFaceCV,
         &Mesh::m_pWallFaceBnd},
        {&Mesh::m_nInletFace, &Mesh::m_pInletFaceXc, &Mesh::m_pInletFaceYc, &Mesh::m_pInletFaceZc,
         &Mesh::m_pInletFaceSx, &Mesh::m_pInletFaceSy, &Mesh::m_pInletFaceSz, &Mesh::m_pInletFaceCV,
         &Mesh::m_pInletFaceBnd},
        {&Mesh::m_nOutletFace, &Mesh::m_pOutletFaceXc, &Mesh::m_pOutletFaceYc,
         &Mesh::m_pOutletFaceZc, &Mesh::m_pOutletFaceSx, &Mesh::m_pOutletFaceSy,
         &Mesh::m_pOutletFaceSz, &Mesh::m_pOutletFaceCV, &Mesh::m_pOutletFaceBnd},
        {&Mesh::m_nSymmFace, &Mesh::m_pSymmFaceXc, &Mesh::m_pSymmFaceYc, &Mesh::m_pSymmFaceZc,
         &Mesh::m_pSymmFaceSx, &Mesh::m_pSymmFaceSy, &Mesh::m_pSymmFaceSz, &Mesh::m_pSymmFaceCV,
         &Mesh::m_pSymmFaceBnd},
    }};
    for (int g = 0; g < boundaryGroups; ++g) {
        Group& group = m_groups[g];
        m_mesh.*names[g].count = static_cast<int>(group.cell.size()) - 1;
        m_mesh.*names[g].xc = group.centre.x.data();
        m_mesh.*names[g].yc = group.centre.y.data();
        m_mesh.*names[g].zc = group.centre.z.data();
        m_mesh.*names[g].sx = group.area.x.data();
        m_mesh.*names[g].sy = group.area.y.data();
        m_mesh.*names[g].sz = group.area.z.data();
        m_mesh.*names[g].cell = group.cell.data();
        m_mesh.*names[g].slot = group.slot.data();
    }
}

void HostModel::bindCellRows(const FvMesh& mesh, const BoundaryGroups& groups) {
    const std::vector<int> number = numbersWithinKind(mesh, groups);
    const int cells = mesh.cellCount();
    const int* haloSlot = m_partitionFaces.ijPar();
    std::vector<int> faces(cells);
    std::vector<int> neighbours(cells, 0);
    for (int c = 0; c < cells; ++c) {
        faces[c] = static_cast<int>(mesh.cellFaces[c].size());
        for (const int face : mesh.cellFaces[c])
            neighbours[c] += slotAcross(mesh, haloSlot, face, c) > 0 ? 1 : 0;
    }
    m_cellNode = oneBased(mesh.cellNodes);
    m_cellFace = RowTable(faces);
    m_cellFaceType = RowTable(faces);
    m_cellNeighbour = RowTable(neighbours);
    for (int c = 0; c < cells; ++c) {
        int* faceRow = m_cellFace.row(c + 1);
        int* typeRow = m_cellFaceType.row(c + 1);
        int* neighbourRow = m_cellNeighbour.row(c + 1);
        for (const int face : mesh.cellFaces[c]) {
            const int across = slotAcross(mesh, haloSlot, face, c);
            *++faceRow = number[face];
            *++typeRow = typeOf(mesh, groups, face);
            if (across > 0) *++neighbourRow = across;
        }
    }
    m_mesh.m_ppCellNode = m_cellNode.data();
    m_mesh.m_ppCellFace = m_cellFace.data();
    m_mesh.m_ppCellFaceType = m_cellFaceType.data();
    m_mesh.m_ppCellNeighbour = m_cellNeighbour.data();
}

void HostModel::bindInterfaceNodes(const FvMesh& mesh) {
    m_parFaceNode = oneBased(mesh.faceNodes, mesh.firstInterfaceFace());
    m_mesh.m_ppParFaceNode = m_parFaceNode.data();
}

void HostModel::bindFlow(const FvMesh& mesh, const std::vector<float>& fillTime,
                         const RankPart& part) {
    constexpr int biInjectionMode = 11;
    m_flowVariable = overSlots(mesh, fillTime, part);
    // A rank without cells has no values of a second injection either, but takes part in fetching
    // those of the others.
    if (part.ranks.maximum(std::int64_t{!m_options.biInjection.empty()}) > 0) {
        m_biInjection = overSlots(mesh, m_options.biInjection, part);
        m_analysisMode = biInjectionMode;
    }
    m_cellState.assign(static_cast<std::size_t>(m_mesh.m_nCV_Total) + 1, 0);
    std::copy(m_options.cellState.begin(), m_options.cellState.end(), m_cellState.begin() + 1);

    m_gv.m_pFlowVariable = m_flowVariable.data();
    m_gv.m_pCellState = m_cellState.data();
    m_gv.m_pControlFilePath = m_options.controlFile.c_str();
    m_gv.m_pMeshFilePath = m_options.meshFile.c_str();
    m_gv.m_pProcessNumber = &m_processNumber;
    m_gv.m_pAnalysisMode = &m_analysisMode;
    m_gv.m_pGradSetSwitch = &m_options.gradientSetSwitch;
}

}  // namespace weldline
