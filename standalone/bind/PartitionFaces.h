#pragma once

#include <vector>

#include "CPartitionFace_DLL.h"
#include "mesh/FvMesh.h"
#include "partition/MeshInterface.h"

namespace weldline {

// The interface faces of this rank as the library asks for them: 1-based, in the order of the
// mesh. The halo cells have the last cell slots, behind own cells and boundary faces.
class PartitionFaces final : public CPartitionFace_DLL {
  public:
    PartitionFaces(const FvMesh& mesh, const MeshInterface& interface);

    int NParInterFace() override { return static_cast<int>(m_lambda.size()) - 1; }
    int* ijParCV() override { return m_ownCell.data(); }
    int* ijPar() override { return m_haloSlot.data(); }
    double* ijParSx() override { return m_sx.data(); }
    double* ijParSy() override { return m_sy.data(); }
    double* ijParSz() override { return m_sz.data(); }
    double* ijParxc() override { return m_xc.data(); }
    double* ijParyc() override { return m_yc.data(); }
    double* ijParzc() override { return m_zc.data(); }
    double* ParInterFace_Lamda() override { return m_lambda.data(); }

  private:
    std::vector<int> m_ownCell{0}, m_haloSlot{0};
    std::vector<double> m_sx{0.0}, m_sy{0.0}, m_sz{0.0}, m_xc{0.0}, m_yc{0.0}, m_zc{0.0};
    std::vector<double> m_lambda{0.0};
};

}  // namespace weldline
