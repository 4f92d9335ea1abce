#include "HostArrays.h"

namespace weldline::reference {

std::uint64_t ArrayStore::checksum() const {
    std::uint64_t sum = 14695981039346656037ull;
    for (std::size_t i : arrays_) {
        const unsigned char* bytes = memories_[i].firstByte();
        for (std::size_t k = 0; k < memories_[i].bytes(); ++k) {
            sum = (sum ^ bytes[k]) * 1099511628211ull;
        }
    }
    return sum;
}

HostArrays::HostArrays(const PartitionData& data, const HostManner& manner)
    : store(manner.placing), nullArrays_(manner.nullArrays) {
    mesh.m_nCV_Total = data.slots;
    mesh.m_nCV = data.cells;
    mesh.m_nNode = data.nodes;
    mesh.m_nCountAux = poisonInt;
    mesh.m_nInnerFace = data.innerFaces();
    mesh.m_nWallFace = data.group[PartitionData::wall].count();
    mesh.m_nInletFace = data.group[PartitionData::inlet].count();
    mesh.m_nOutletFace = data.group[PartitionData::outlet].count();
    mesh.m_nSymmFace = data.group[PartitionData::symmetry].count();
    placeCells(data);
    placeInnerFaces(data);
    placeGroups(data);
    placeReserved(data);
}

template <class T>
T* HostArrays::placeUnless(bool unread, const std::vector<T>& values) {
    return unread && nullArrays_ ? nullptr : store.place(values);
}

void HostArrays::placeCells(const PartitionData& data) {
    const bool noSlots = data.slots == 0;
    mesh.m_pXc = placeUnless(noSlots, data.xc);
    mesh.m_pYc = placeUnless(noSlots, data.yc);
    mesh.m_pZc = placeUnless(noSlots, data.zc);
    mesh.m_pVolume = placeUnless(noSlots, data.volume);
    gv.m_pFlowVariable = placeUnless(noSlots, data.flow);
    gv.m_pCellState = placeUnless(data.cells == 0, data.cellState);
    biInjection = store.place(data.biInjection);
    const bool noNodes = data.nodes == 0;
    mesh.m_pNodeX = placeUnless(noNodes, data.nodeX);
    mesh.m_pNodeY = placeUnless(noNodes, data.nodeY);
    mesh.m_pNodeZ = placeUnless(noNodes, data.nodeZ);
    if (data.cells > 0 || !nullArrays_) {
        const auto placeRows = [&](const PartitionData::IntRows& rows) {
            return store.placeRows(rows, First::meaningful, poisonInt);
        };
        mesh.m_ppCellNode = placeRows(data.cellNode);
        mesh.m_ppCellFace = placeRows(data.cellFace);
        mesh.m_ppCellFaceType = placeRows(data.cellFaceType);
        mesh.m_ppCellNeighbour = placeRows(data.cellNeighbour);
    }
}

void HostArrays::placeInnerFaces(const PartitionData& data) {
    if (data.innerFaces() > 0 || !nullArrays_) {
        mesh.m_ppInnerFace = store.placeRows(data.innerFace, First::meaningless, poisonReal);
        mesh.m_pInnerFaceLambda = store.place(data.lambda);
    }
    if (data.interface.count() > 0 || !nullArrays_) {
        mesh.m_ppParFaceNode = store.placeRows(data.interface.nodes, First::meaningful, poisonInt);
    }
}

void HostArrays::placeGroups(const PartitionData& data) {
    const auto placeGroup = [&](const PartitionData::Group& g, double*& xc, double*& yc,
                                double*& zc, double*& sx, double*& sy, double*& sz, int*& cell,
                                int*& slot) {
        const bool empty = g.count() == 0;
        xc = placeUnless(empty, g.xc);
        yc = placeUnless(empty, g.yc);
        zc = placeUnless(empty, g.zc);
        sx = placeUnless(empty, g.sx);
        sy = placeUnless(empty, g.sy);
        sz = placeUnless(empty, g.sz);
        cell = placeUnless(empty, g.cell);
        slot = placeUnless(empty, g.slot);
    };
    CKVR3DFiniteVolumeMesh& m = mesh;
    placeGroup(data.group[PartitionData::wall], m.m_pWallFaceXc, m.m_pWallFaceYc, m.m_pWallFaceZc,
               m.m_pWallFaceSx, m.m_pWallFaceSy, m.m_pWallFaceSz, m.m_pWallFaceCV,
               m.m_pWallFaceBnd);
    placeGroup(data.group[PartitionData::inlet], m.m_pInletFaceXc, m.m_pInletFaceYc,
               m.m_pInletFaceZc, m.m_pInletFaceSx, m.m_pInletFaceSy, m.m_pInletFaceSz,
               m.m_pInletFaceCV, m.m_pInletFaceBnd);
    placeGroup(data.group[PartitionData::symmetry], m.m_pSymmFaceXc, m.m_pSymmFaceYc,
               m.m_pSymmFaceZc, m.m_pSymmFaceSx, m.m_pSymmFaceSy, m.m_pSymmFaceSz, m.m_pSymmFaceCV,
               m.m_pSymmFaceBnd);
}

// What is bound and never read: addresses that lead nowhere, each of them another one.
void HostArrays::placeReserved(const PartitionData& data) {
    if (nullArrays_) return;
    std::uintptr_t address = 16;
    const auto nowhere = [&](auto*& pointer) {
        pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(address);
        address += 16;
    };
    nowhere(mesh.m_pOutletFaceXc);
    nowhere(mesh.m_pOutletFaceYc);
    nowhere(mesh.m_pOutletFaceZc);
    nowhere(mesh.m_pOutletFaceSx);
    nowhere(mesh.m_pOutletFaceSy);
    nowhere(mesh.m_pOutletFaceSz);
    nowhere(mesh.m_pOutletFaceCV);
    nowhere(mesh.m_pOutletFaceBnd);
    nowhere(mesh.m_pHostCellArrayB);
    nowhere(gv.m_pHostCellArrayA);
    nowhere(gv.m_pHostArray1);
    nowhere(gv.m_pHostArray2);
    nowhere(gv.m_pHostArray3);
    nowhere(gv.m_pHostArray4);
    mesh.m_nCountAux = data.slots + 5;
}

void HostArrays::scramble() {
    mesh = CKVR3DFiniteVolumeMesh{};
    mesh.m_nCV = mesh.m_nCV_Total = mesh.m_nNode = mesh.m_nInnerFace = 1000000;
    mesh.m_nWallFace = mesh.m_nInletFace = mesh.m_nSymmFace = 1000000;
    gv.m_pFlowVariable = nullptr;
    gv.m_pCellState = nullptr;
    gv.m_pControlFilePath = "scrambled";
    gv.m_pAnalysisMode = nullptr;
}

}  // namespace weldline::reference
