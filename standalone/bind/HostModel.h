#pragma once

#include <array>
#include <string>
#include <vector>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKvr3dGV.h"
#include "PartitionFaces.h"
#include "RankPart.h"
#include "RowTable.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline {

// What a run of the library can be told beside mesh and fill time.
struct HostOptions {
    std::string controlFile;         // the file's name must contain a "."
    std::string meshFile;            // named to the library, never opened
    int meshFileType = 0;            // 2 selects other default boundary angles in methods 1 and 2
    double gradientSetSwitch = 1.0;  // 1: method 4 compares the second gradient set, where there
                                     // is one; any other value: the first
    std::vector<float> biInjection;  // per cell: fill time of a second injection, used where the
                                     // first did not arrive; empty: none
    std::vector<int> cellState;      // per cell: 1 or more, or -1, keeps the cell's nodes free of
                                     // weld lines; empty: 0 everywhere
};

// Everything that the library borrows for a run on this rank, built from a finite-volume mesh and a
// fill time per cell. The model owns the host objects and all arrays behind them, so it must
// outlive every handle of the library that it was given to.
//
// Numbering is 1-based: cell, node and inner face number = 0-based index + 1. Cell slots: the own
// cells, then one boundary-value slot per boundary face, in the order of the boundary faces of
// `mesh` (whatever their group), then one halo slot per cell across an interface face. A boundary
// slot holds the fill time and the volume of its own cell; its centre is the face centre. A halo
// slot holds centre, volume and fill time of the true cell. Faces are numbered within their kind:
// inner faces in the order of `mesh`, wall, inlet, outlet and symmetry faces each from 1 in the
// order of the boundary faces, interface faces in theirs. The neighbours of a cell are its own
// ones, then halo slots. Lengths, areas and times stay in the units of the input.
class HostModel {
  public:
    // Face types in m_ppCellFaceType.
    static constexpr int innerFace = 0;
    static constexpr int interfaceFace = 101;
    static constexpr std::array<int, 4> boundaryFaceType{1, 2, 3, 4};  // by GroupKind

    // `fillTime` has one value per cell, exactly 0 where the melt did not come. Throws UsageError
    // when the control file's name has no "." (the library would write its trace over it) and
    // InputError when a per-cell array has another size than the mesh has cells.
    HostModel(const FvMesh& mesh, const BoundaryGroups& groups, const std::vector<float>& fillTime,
              HostOptions options);

    // The same on each rank of a run, whose parts joinParts has joined; fill time, bi-injection and
    // cell state have one value per own cell. Collective; a failure is thrown on all ranks.
    HostModel(const FvMesh& mesh, const BoundaryGroups& groups, const std::vector<float>& fillTime,
              HostOptions options, const RankPart& part);
    HostModel(const HostModel&) = delete;
    HostModel& operator=(const HostModel&) = delete;

    CKvr3dGV& globalVariables() { return m_gv; }
    CKVR3DFiniteVolumeMesh& mesh() { return m_mesh; }
    CPartitionFace_DLL& partitionFaces() { return m_partitionFaces; }
    const HostOptions& options() const { return m_options; }

    // Lists for the setters of the library that keep lists for the host.
    int** cellNodes() { return m_cellNode.data(); }
    int** faceNodes(GroupKind kind) { return m_faceNodes[static_cast<int>(kind)].data(); }
    int* globalNodes() { return m_globalNode.data(); }  // node number in the uncut mesh
    int** cavityMap() { return m_cavityMap.data(); }    // empty: one numbering only
    float* biInjection() { return m_biInjection.empty() ? nullptr : m_biInjection.data(); }

  private:
    struct Column3 {
        std::vector<double> x, y, z;
        void resize(std::size_t slots);
        void set(std::size_t slot, Vec3 v);
    };
    struct Group {
        Column3 centre, area;
        std::vector<int> cell, slot;
    };

    void checkInput(const FvMesh& mesh, const std::vector<float>& fillTime) const;
    void bindCells(const FvMesh& mesh, const MeshInterface& interface);
    void bindNodes(const FvMesh& mesh, const std::vector<std::int64_t>& nodeNumber);
    void bindInnerFaces(const FvMesh& mesh);
    void bindGroups(const FvMesh& mesh, const BoundaryGroups& groups);
    void bindGroupPointers();
    void bindCellRows(const FvMesh& mesh, const BoundaryGroups& groups);
    void bindInterfaceNodes(const FvMesh& mesh);
    void bindFlow(const FvMesh& mesh, const std::vector<float>& fillTime, const RankPart& part);

    HostOptions m_options;
    int m_processNumber;
    int m_analysisMode = 0;
    PartitionFaces m_partitionFaces;
    CKVR3DFiniteVolumeMesh m_mesh;
    CKvr3dGV m_gv;

    Column3 m_centre, m_node;
    std::vector<double> m_volume, m_lambda, m_innerFace;
    std::vector<double*> m_innerFaceRows;
    std::array<Group, 4> m_groups;        // by GroupKind
    std::array<RowTable, 4> m_faceNodes;  // by GroupKind
    RowTable m_cellNode, m_cellFace, m_cellFaceType, m_cellNeighbour, m_parFaceNode, m_cavityMap;
    std::vector<float> m_flowVariable, m_biInjection;
    std::vector<int> m_cellState, m_globalNode;
};

}  // namespace weldline
