#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "mesh/Rows.h"
#include "mesh/Vec3.h"

namespace weldline {

// A surface element section of an unstructured zone.
struct CgnsSection {
    std::string name;
    std::int64_t first = 0;   // number of its first element
    bool isFaceList = false;  // faces of polyhedra, most of them inside
    Rows corners;             // points from 0; empty for an element that is no surface
};

struct CgnsCondition {
    std::string name;  // of its family, or its own
    bool isOnPoints = false;
    // Ranges of numbers of elements or of points, from 1, both ends included.
    std::vector<std::pair<std::int64_t, std::int64_t>> members;
};

// The parts of a zone that its boundary is made of.
struct CgnsZone {
    std::vector<Vec3> points;
    std::vector<CgnsSection> sections;
    std::vector<CgnsCondition> conditions;
};

// A CGNS file opened for reading; one at a time. Every call throws InputError where the file does
// not hold what it says.
class CgnsFile {
  public:
    explicit CgnsFile(const std::string& file);
    ~CgnsFile();
    CgnsFile(const CgnsFile&) = delete;
    CgnsFile& operator=(const CgnsFile&) = delete;

    // The unstructured zones of the bases of 3-D cells.
    std::vector<CgnsZone> zones() const;

  private:
    void check(int status) const;
    bool hasVolumes(int base) const;
    CgnsZone readZone(int base, int zone) const;
    std::vector<Vec3> readPoints(int base, int zone, std::int64_t count) const;
    void require(bool isSound, const std::string& section) const;
    CgnsSection readSection(int base, int zone, int section, std::int64_t points) const;
    CgnsCondition readCondition(int base, int zone, int condition) const;
    std::string familyOf(int base, int zone, int condition) const;

    std::string file_;
    int number_ = 0;
};

}  // namespace weldline
