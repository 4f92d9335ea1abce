#pragma once

#include <functional>
#include <string>
#include <vector>

#include "CKVR3D_WeldLine_Manipulator.h"
#include "Outcome.h"
#include "TestHost.h"

namespace weldline::test {

// The mesh with the tables that the RBF objects of this program hand on.
struct TabledMesh : CKVR3DFiniteVolumeMesh {
    int** stencils = nullptr;
    double** weights = nullptr;
};

// A host that shares nothing with other hosts and allocates nothing while the library calls it:
// what is allocated then is the library's.
class QuietHost : private CCommunication, private CKVRCom {
  public:
    explicit QuietHost(const std::function<void(TestHost&)>& fill);

    void choose(const Choice& choice, const std::vector<std::string>& lines = {});

    void bind(CKVR3D_WeldLine_Manipulator& handle);  // every setter, then setFlowData
    // The whole life of a handle; the result without slot 0 goes into `angles`, which has room.
    void calculate(std::vector<double>& angles);
    // The result of a handle, and room for it.
    void read(CKVR3D_WeldLine_Manipulator& handle, std::vector<double>& angles) const;
    std::vector<double> roomForAngles() const;

    TestHost host;

  private:
    void DDM_Exch(double* cellArray) override { host.exchange(cellArray); }
    int AllMax(int& value) override { return value; }

    void makeTables();

    TabledMesh m_mesh;
    std::vector<std::vector<int>> m_stencils;
    std::vector<std::vector<double>> m_weights;
    std::vector<int*> m_stencilRows{nullptr};
    std::vector<double*> m_weightRows{nullptr};
    std::vector<float> m_biInjection;
    int m_row[1] = {0};
    int* m_rows[1] = {m_row};
};

// A host of two cells side by side.
void addTwoCells(TestHost& host);

}  // namespace weldline::test
