#include "PartitionFaces.h"

namespace weldline {

PartitionFaces::PartitionFaces(const FvMesh& mesh, const MeshInterface& interface) {
    const int firstHaloSlot = mesh.cellCount() + mesh.boundaryFaces() + 1;
    for (int i = 0; i < mesh.interfaceFaces; ++i) {
        const auto face =
            static_cast<std::size_t>(mesh.firstInterfaceFace()) + static_cast<std::size_t>(i);
        m_ownCell.push_back(mesh.owner[face] + 1);
        m_haloSlot.push_back(firstHaloSlot + interface.haloOfFace[static_cast<std::size_t>(i)]);
        m_sx.push_back(mesh.faceArea[face].x);
        m_sy.push_back(mesh.faceArea[face].y);
        m_sz.push_back(mesh.faceArea[face].z);
        m_xc.push_back(mesh.faceCentre[face].x);
        m_yc.push_back(mesh.faceCentre[face].y);
        m_zc.push_back(mesh.faceCentre[face].z);
        m_lambda.push_back(interface.lambda[static_cast<std::size_t>(i)]);
    }
}

}  // namespace weldline
