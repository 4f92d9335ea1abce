#pragma once

#include <string>
#include <vector>

#include "mesh/Vec3.h"

namespace weldline::test {

// Writes CGNS files by the library of the format, as a solver does, and not by the one that VTK
// brings along. Indices are those of the format, from 1. A call that fails is a failed test.
class CgnsWriter {
  public:
    enum class Form { Hdf5, Adf };
    enum class Shape { Triangle, Quad, Hexa, Mixed, FaceList, CellList };
    enum class Condition { Family, Wall, Inflow, Outflow };
    enum class Set { Range, List };

    explicit CgnsWriter(const std::string& file, Form form = Form::Hdf5);
    ~CgnsWriter();
    CgnsWriter(const CgnsWriter&) = delete;
    CgnsWriter& operator=(const CgnsWriter&) = delete;

    // What follows goes into this zone.
    CgnsWriter& zone(const std::string& name, const std::vector<Vec3>& points, int cells);

    // A zone of one structured cell.
    CgnsWriter& structuredZone(const std::string& name);

    // `starts` are the offsets of elements of several kinds; the elements are numbered on.
    CgnsWriter& section(const std::string& name, Shape shape, int elements,
                        const std::vector<long>& corners, const std::vector<long>& starts = {});

    // Of elements, or of points.
    CgnsWriter& condition(const std::string& name, Condition type, Set set,
                          const std::vector<long>& members, const std::string& family = "");
    CgnsWriter& conditionOnPoints(const std::string& name, Set set,
                                  const std::vector<long>& points);

    // A value for each cell, the same array at another time in another solution.
    CgnsWriter& solution(const std::string& name, const std::string& array,
                         const std::vector<double>& values);

    // The times of the solutions of this zone, in their order.
    CgnsWriter& times(const std::vector<double>& values, const std::vector<std::string>& solutions);

  private:
    int file_ = 0;
    int base_ = 0;
    int zone_ = 0;
    long elements_ = 0;  // of the zone so far
};

}  // namespace weldline::test
