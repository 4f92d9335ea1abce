#pragma once

#include <string>
#include <vector>

#include "Scheme.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::accuracy {

struct Run {
    std::vector<double> angles;  // per node, degrees
    double seconds = 0.0;        // processor time of the library, binding included
};

// Runs the library with one scheme after the other. Keeps the control file in a temporary folder of
// its own, which goes with the runner.
class Runner {
  public:
    Runner();
    ~Runner();
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    Run run(const FvMesh& mesh, const BoundaryGroups& groups, const std::vector<float>& fillTime,
            const Scheme& scheme) const;

  private:
    std::string m_folder;
};

}  // namespace weldline::accuracy
