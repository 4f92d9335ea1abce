#include "HostArrays.h"

namespace weldline::reference {

std::uint64_t ArrayStore::checksum() const {
    std::uint64_t sum = 14695981039346656037ull;
    for (const Block& block : blocks_) {
        for (std::size_t i = 0; i < block.bytes; ++i) {
            sum = (sum ^ block.memory[i]) * 1099511628211ull;
        }
    }
    return sum;
}

HostArrays::HostArrays(const PartitionData& data) {
    mesh.m_nCV_Total = data.slots;
    mesh.m_nCV = data.cells;
    mesh.m_nNode = data.nodes;
    mesh.m_nCountAux = poisonInt;
    mesh.m_nInnerFace = data.innerFaces();
    mesh.m_nWallFace = data.group[PartitionData::wall].count();
    mesh.m_nInletFace = data.group[PartitionData::inlet].count();
    mesh.m_nOutletFace = data.group[PartitionData::outlet].count();
    mesh.m_nSymmFace = data.group[PartitionData::symmetry].count();

    mesh.m_pXc = store.place(data.xc);
    mesh.m_pYc = store.place(data.yc);
    mesh.m_pZc = store.place(data.zc);
    mesh.m_pVolume = store.place(data.volume);
    mesh.m_pNodeX = store.place(data.nodeX);
    mesh.m_pNodeY = store.place(data.nodeY);
    mesh.m_pNodeZ = store.place(data.nodeZ);
    mesh.m_ppInnerFace = store.placeRows(data.innerFace);
    mesh.m_pInnerFaceLambda = store.place(data.lambda);
    mesh.m_ppCellNode = store.placeRows(data.cellNode);
    mesh.m_ppCellFace = store.placeRows(data.cellFace);
    mesh.m_ppCellFaceType = store.placeRows(data.cellFaceType);
    mesh.m_ppCellNeighbour = store.placeRows(data.cellNeighbour);
    mesh.m_ppParFaceNode = store.placeRows(data.interface.nodes);

    const auto placeGroup = [&](const PartitionData::Group& g, double*& xc, double*& yc,
                                double*& zc, double*& sx, double*& sy, double*& sz, int*& cell,
                                int*& slot) {
        xc = store.place(g.xc);
        yc = store.place(g.yc);
        zc = store.place(g.zc);
        sx = store.place(g.sx);
        sy = store.place(g.sy);
        sz = store.place(g.sz);
        cell = store.place(g.cell);
        slot = store.place(g.slot);
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
    // The outlet arrays stay null: nothing may read them.

    gv.m_pFlowVariable = store.place(data.flow);
    gv.m_pCellState = store.place(data.cellState);
    biInjection = store.place(data.biInjection);
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
