#pragma once

#include <memory>
#include <string>
#include <vector>

#include "BoxMesh.h"
#include "CKVR3D_WeldLine_Manipulator.h"
#include "ControlText.h"
#include "TestHost.h"

namespace weldline::test {

// A solver with a box of cubes that uses the library through its public class alone.
class Solver {
  public:
    explicit Solver(int nx = 2, int ny = 2, int nz = 2, const GroupOf& groupOf = wallEverywhere);

    void start();  // a new handle with every setter called in the documented order
    void bind() { handle->setFlowData(host.gv(), host.mesh()); }
    int run(const std::string& control);  // writes the control file and calculates
    void stop() { handle.reset(); }

    std::string trace() const;     // the trace file as written up to now
    std::vector<double> angles();  // of all nodes, slot 0 included
    // The values of the variable that the n-th exchange (from 0) found, slot 0 left out.
    std::vector<double> exchanged(std::size_t n) const;
    // Every host call since the construction of the handle; an exchange names its array by the
    // order in which the arrays first appeared: "array 0", "array 1", ...
    std::vector<std::string> calls() const;

    TestHost host;
    std::unique_ptr<CKVR3D_WeldLine_Manipulator> handle;

  private:
    std::vector<int> m_row;
    std::vector<int*> m_rows;
};

}  // namespace weldline::test
