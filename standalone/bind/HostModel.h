#pragma once

#include <array>
#include <string>
#include <vector>

#include "CKVR3DFiniteVolumeMesh.h"
#include "CKvr3dGV.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline {

// What a run of the library can be told beside mesh and fill time.
struct HostOptions {
    std::string controlFile;         // the file's name must contain a "."
    std::string meshFile;            // named to the library, never opened
    int processNumber = 0;           // 0 on the master process
    int meshFileType = 0;            // 2 selects other default boundary angles in methods 1 and 2
    double gradientSetSwitch = 1.0;  // 1: method 4 compares the second gradient set, where there
                                     // is one; any other value: the first
    std::vector<float> biInjection;  // per cell: fill time of a second injection, used where the
                                     // first did not arrive; empty: none
    std::vector<int> cellState;      // per cell: 1 or more, or -1, keeps the cell's nodes free of
                                     // weld lines; empty: 0 everywhere
};

// One row table of the host contract in two flat arrays: pointer i (1-based, pointer 0 is null)
// leads to a row whose element 0 is the count and elements 1 to count the members.
class RowTable {
  public:
    RowTable() = default;
    // Sizes of the rows 0, 1, ... (0-based); all counts are set, all members 0.
    explicit RowTable(const std::vector<int>& sizes);

    int* row(int number) { return m_rows[number]; }  // 1-based
    int** data() { return m_rows.data(); }

  private:
    std::vector<int> m_entries;
    std::vector<int*> m_rows = std::vector<int*>(1, nullptr);
};

// Everything that the library borrows for a run in one process, built from a finite-volume mesh
// and a fill time per cell. The model owns the host objects and all arrays behind them, so it must
// outlive every handle of the library that it was given to.
//
// Numbering is 1-based: cell, node and inner face number = 0-based index + 1. Cell slots: the own
// cells, then one boundary-value slot per boundary face, in the order of the boundary faces of
// `mesh` (whatever their group). A boundary slot holds the fill time and the volume of its own
// cell; its centre is the face centre. Faces are numbered within their kind: inner faces in the
// order of `mesh`, wall, inlet, outlet and symmetry faces each from 1 in the order of the boundary
// faces. Lengths, areas and times stay in the units of the input.
class HostModel {
  public:
    // Face types in m_ppCellFaceType.
    static constexpr int innerFace = 0;
    static constexpr std::array<int, 4> boundaryFaceType{1, 2, 3, 4};  // by GroupKind

    // `fillTime` has one value per cell, exactly 0 where the melt did not come. Throws UsageError
    // when the control file's name has no "." (the library would write its trace over it) and
    // InputError when a per-cell array has another size than the mesh has cells.
    HostModel(const FvMesh& mesh, const BoundaryGroups& groups, const std::vector<float>& fillTime,
              HostOptions options);
    HostModel(const HostModel&) = delete;
    HostModel& operator=(const HostModel&) = delete;

    CKvr3dGV& globalVariables() { return m_gv; }
    CKVR3DFiniteVolumeMesh& mesh() { return m_mesh; }
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

    void bindCells(const FvMesh& mesh);
    void bindNodes(const FvMesh& mesh);
    void bindInnerFaces(const FvMesh& mesh);
    void bindGroups(const FvMesh& mesh, const BoundaryGroups& groups);
    void bindGroupPointers();
    void bindCellRows(const FvMesh& mesh, const BoundaryGroups& groups);
    void bindFlow(const FvMesh& mesh, const std::vector<float>& fillTime);
    std::vector<float> overSlots(const FvMesh& mesh, const std::vector<float>& cells) const;

    HostOptions m_options;
    int m_analysisMode = 0;
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
