#pragma once

#include <string>
#include <string_view>

#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::test {

// A block of nx x ny x nz cubes of edge length 1 with its corner at the origin, written down
// without the mesh builder. Cell (i, j, k) is i + nx (j + ny k), point (i, j, k) is
// i + (nx + 1) (j + (ny + 1) k). The faces of a cell come in the order x-, x+, y-, y+, z-, z+.
FvMesh boxMesh(int nx, int ny, int nz);

// Groups by the side of the block, one letter for x-, x+, y-, y+, z-, z+: W wall, I inlet,
// O outlet, S symmetry.
BoundaryGroups boxGroups(const FvMesh& mesh, std::string_view sides);

// A folder of its own below the system's folder for temporary files; removed with everything in it.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(const std::string& file) const { return m_path + "/" + file; }
    std::string write(const std::string& file, const std::string& text) const;  // answers the path
    std::string read(const std::string& file) const;
    bool has(const std::string& file) const;

  private:
    std::string m_path;
};

}  // namespace weldline::test
