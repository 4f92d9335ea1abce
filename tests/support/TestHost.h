#pragma once

#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "CCommunication.h"
#include "CKVR3DFiniteVolumeMesh.h"
#include "CKVRCom.h"
#include "CKvr3dGV.h"
#include "CPartitionFace_DLL.h"

namespace weldline::test {

using Point = std::array<double, 3>;

enum class Group { Wall, Inlet, Outlet, Symm };

// What the library called, in order: "DDM_Exch", "AllMax 1", "RBF0 getKvr3dGV", "RBF0
// getPartitionFace", "RBF0 Initialize 1", "RBF0 construct", "RBF0 destroy". Accessors of the
// partition object are counted apart.
using CallLog = std::vector<std::string>;

struct Exchange {
    double* array;               // the pointer that DDM_Exch received
    std::vector<double> before;  // its cell slots 0 to m_nCV_Total at that moment
};

// A strict host for tests: owns every array the library borrows, each row in an allocation of its
// own length, with NaN (reals) and a large negative number (ints) in slots that mean nothing.
//
// Use: add nodes, cells and faces (all numbers answered and taken are 1-based), call finish(), set
// values, then hand gv(), mesh(), partition(), communication() and collective() to the library.
class TestHost : private CPartitionFace_DLL, private CCommunication, private CKVRCom {
  public:
    TestHost();
    ~TestHost() override;

    int addNode(Point position);
    int addCell(Point centre, double volume, std::vector<int> nodes);
    int addInner(int firstCell, int secondCell, Point area, Point centre, double lambda = 0.5);
    // Face number within its group; every boundary face gets a boundary-value slot.
    int addBoundary(Group group, int cell, Point area, Point centre);
    // An interface face with its own halo slot.
    int addInterface(int cell, Point area, Point centre, double lambda, Point haloCentre,
                     double haloVolume, std::vector<int> nodes);
    // Replaces the cell numbers of an inner face's record, for reals like 12.9.
    void setInnerCells(int face, double first, double second);
    void addNeighbour(int cell, int neighbour);  // to m_ppCellNeighbour

    // Builds all arrays. Cell slots: own cells, boundary slots in the order of addBoundary, halo
    // slots in the order of addInterface. All values start at 1, outlet slots and slot 0 at NaN.
    void finish();

    int boundarySlot(Group group, int face) const;  // after finish()
    int haloSlot(int interfaceFace) const;
    int slots() const { return m_mesh.m_nCV_Total; }

    void setValue(int slot, float value);  // flow variable
    void setState(int cell, int state);
    void setControl(const std::string& text);  // writes a control file of this host's own (".cmp")
    void setControlPath(const std::string& path);
    std::string controlPath() const { return m_controlPath; }
    std::string tracePath() const;  // where the debug trace of the control path belongs
    static std::string readFile(const std::string& path);
    static bool fileExists(const std::string& path);

    CKvr3dGV* gv() { return &m_gv; }
    CKVR3DFiniteVolumeMesh* mesh() { return &m_mesh; }
    CPartitionFace_DLL* partition() { return this; }
    CCommunication* communication() { return this; }
    CKVRCom* collective() { return this; }

    // Behaviour of the host objects.
    int processNumber = 0;
    int analysisMode = 0;
    double gradSetSwitch = 1.0;
    std::function<int(int)> allMax = [](int value) { return value; };
    std::function<void(double*)> exchange = [](double*) {};  // fills halo slots; after recording

    // Records.
    std::vector<Exchange> exchanges;
    std::vector<int> allMaxArguments;
    int partitionCalls = 0;

  private:
    struct BoundaryFace {
        Group group;
        int cell;
        Point area, centre;
    };
    struct InterfaceFace {
        int cell;
        Point area, centre, haloCentre;
        double lambda, haloVolume;
        std::vector<int> nodes;
    };

    int NParInterFace() override;
    int* ijParCV() override;
    int* ijPar() override;
    double* ijParSx() override;
    double* ijParSy() override;
    double* ijParSz() override;
    double* ijParxc() override;
    double* ijParyc() override;
    double* ijParzc() override;
    double* ParInterFace_Lamda() override;
    void DDM_Exch(double* cellArray) override;
    int AllMax(int& value) override;

    double* reals(std::size_t slots, double value);
    int* ints(std::size_t slots, int value);
    int** rowTable(const std::vector<std::vector<int>>& rows);  // rows[i]: members of entity i + 1
    void finishCells();
    void finishInnerFaces();
    void finishGroup(Group group, int& count, std::array<double**, 6> columns, int** cell,
                     int** slot);
    void finishInterface();
    void finishCellFaces();

    std::vector<Point> m_nodes, m_centres;
    std::vector<double> m_volumes;
    std::vector<std::vector<int>> m_cellNodes, m_cellNeighbours;
    std::vector<std::array<double, 9>> m_inner;
    std::vector<double> m_lambda;
    std::vector<BoundaryFace> m_boundary;
    std::vector<InterfaceFace> m_interface;

    CKVR3DFiniteVolumeMesh m_mesh;
    CKvr3dGV m_gv;
    int *m_parCell = nullptr, *m_parHalo = nullptr;
    std::array<double*, 7> m_par{};  // Sx Sy Sz xc yc zc lambda
    std::string m_directory, m_controlPath;
    std::vector<std::shared_ptr<void>> m_memory;
};

// The library's calls to any host object since the last clear.
CallLog& callLog();

// Runs `action` and answers what it wrote to standard output (file descriptor 1).
std::string standardOutputOf(const std::function<void()>& action);

// Stencils and weights that the test host's RBF objects offer after preparation with code 1;
// [f - 1] belongs to inner face f. Empty: every face gets its two cells with weights
// 1 - lambda and lambda.
struct RbfRows {
    std::vector<std::vector<int>> stencils;
    std::vector<std::vector<double>> weights;
    bool hasStencils = true;  // false: a null table
    bool hasWeights = true;
};
RbfRows& rbfRows();

// The next construction of an RBF object number `object` (0 to 4 within a calculator) throws
// std::runtime_error; -1: none. Construction counts from the last resetRbfObjects().
void resetRbfObjects(int throwingObject = -1);

inline const double NaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace weldline::test
