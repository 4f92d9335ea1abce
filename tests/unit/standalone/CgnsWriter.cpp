#include "CgnsWriter.h"

#include <cgnslib.h>
#include <gtest/gtest.h>

#include <array>

namespace weldline::test {
namespace {

void check(int status) {
    ASSERT_EQ(status, CG_OK) << cg_get_error();
}

CGNS_ENUMT(ElementType_t) typeOf(CgnsWriter::Shape shape) {
    constexpr std::array types{CGNS_ENUMV(TRI_3), CGNS_ENUMV(QUAD_4), CGNS_ENUMV(HEXA_8),
                               CGNS_ENUMV(MIXED), CGNS_ENUMV(NGON_n), CGNS_ENUMV(NFACE_n)};
    return types.at(static_cast<std::size_t>(shape));
}

CGNS_ENUMT(BCType_t) typeOf(CgnsWriter::Condition condition) {
    constexpr std::array types{CGNS_ENUMV(FamilySpecified), CGNS_ENUMV(BCWall),
                               CGNS_ENUMV(BCInflow), CGNS_ENUMV(BCOutflow)};
    return types.at(static_cast<std::size_t>(condition));
}

CGNS_ENUMT(PointSetType_t) typeOf(CgnsWriter::Set set) {
    return set == CgnsWriter::Set::Range ? CGNS_ENUMV(PointRange) : CGNS_ENUMV(PointList);
}

std::vector<cgsize_t> numbers(const std::vector<long>& values) {
    return {values.begin(), values.end()};
}

}  // namespace

CgnsWriter::CgnsWriter(const std::string& file, Form form) {
    check(cg_set_file_type(form == Form::Hdf5 ? CG_FILE_HDF5 : CG_FILE_ADF));
    check(cg_open(file.c_str(), CG_MODE_WRITE, &file_));
    check(cg_base_write(file_, "Base", 3, 3, &base_));
}

CgnsWriter::~CgnsWriter() {
    check(cg_close(file_));
}

CgnsWriter& CgnsWriter::zone(const std::string& name, const std::vector<Vec3>& points, int cells) {
    const std::array<cgsize_t, 3> sizes{static_cast<cgsize_t>(points.size()), cells, 0};
    check(
        cg_zone_write(file_, base_, name.c_str(), sizes.data(), CGNS_ENUMV(Unstructured), &zone_));
    elements_ = 0;
    const auto put = [&](const char* array, double Vec3::*component) {
        std::vector<double> values;
        for (const Vec3& point : points) {
            values.push_back(point.*component);
        }
        int index = 0;
        check(cg_coord_write(file_, base_, zone_, CGNS_ENUMV(RealDouble), array, values.data(),
                             &index));
    };
    put("CoordinateX", &Vec3::x);
    put("CoordinateY", &Vec3::y);
    put("CoordinateZ", &Vec3::z);
    return *this;
}

CgnsWriter& CgnsWriter::structuredZone(const std::string& name) {
    const std::array<cgsize_t, 9> sizes{2, 2, 2, 1, 1, 1, 0, 0, 0};
    check(cg_zone_write(file_, base_, name.c_str(), sizes.data(), CGNS_ENUMV(Structured), &zone_));
    const std::array<double, 8> places{0, 1, 0, 1, 0, 1, 0, 1};
    for (const char* array : {"CoordinateX", "CoordinateY", "CoordinateZ"}) {
        int index = 0;
        check(cg_coord_write(file_, base_, zone_, CGNS_ENUMV(RealDouble), array, places.data(),
                             &index));
    }
    return *this;
}

CgnsWriter& CgnsWriter::section(const std::string& name, Shape shape, int elements,
                                const std::vector<long>& corners, const std::vector<long>& starts) {
    const std::vector<cgsize_t> data = numbers(corners);
    const std::vector<cgsize_t> offsets = numbers(starts);
    const cgsize_t first = elements_ + 1;
    elements_ += elements;
    int index = 0;
    if (starts.empty()) {
        check(cg_section_write(file_, base_, zone_, name.c_str(), typeOf(shape), first, elements_,
                               0, data.data(), &index));
    } else {
        check(cg_poly_section_write(file_, base_, zone_, name.c_str(), typeOf(shape), first,
                                    elements_, 0, data.data(), offsets.data(), &index));
    }
    return *this;
}

CgnsWriter& CgnsWriter::condition(const std::string& name, Condition type, Set set,
                                  const std::vector<long>& members, const std::string& family) {
    const std::vector<cgsize_t> data = numbers(members);
    int index = 0;
    check(cg_boco_write(file_, base_, zone_, name.c_str(), typeOf(type), typeOf(set),
                        static_cast<cgsize_t>(data.size()), data.data(), &index));
    check(cg_boco_gridlocation_write(file_, base_, zone_, index, CGNS_ENUMV(FaceCenter)));
    if (!family.empty()) {
        check(cg_goto(file_, base_, "Zone_t", zone_, "ZoneBC_t", 1, "BC_t", index, "end"));
        check(cg_famname_write(family.c_str()));
    }
    return *this;
}

CgnsWriter& CgnsWriter::conditionOnPoints(const std::string& name, Set set,
                                          const std::vector<long>& points) {
    const std::vector<cgsize_t> data = numbers(points);
    int index = 0;
    check(cg_boco_write(file_, base_, zone_, name.c_str(), CGNS_ENUMV(BCInflow), typeOf(set),
                        static_cast<cgsize_t>(data.size()), data.data(), &index));
    return *this;
}

CgnsWriter& CgnsWriter::solution(const std::string& name, const std::string& array,
                                 const std::vector<double>& values) {
    int index = 0;
    int field = 0;
    check(cg_sol_write(file_, base_, zone_, name.c_str(), CGNS_ENUMV(CellCenter), &index));
    check(cg_field_write(file_, base_, zone_, index, CGNS_ENUMV(RealDouble), array.c_str(),
                         values.data(), &field));
    return *this;
}

CgnsWriter& CgnsWriter::times(const std::vector<double>& values,
                              const std::vector<std::string>& solutions) {
    const auto count = static_cast<cgsize_t>(values.size());
    check(cg_biter_write(file_, base_, "Times", static_cast<int>(count)));
    check(cg_goto(file_, base_, "BaseIterativeData_t", 1, "end"));
    check(cg_array_write("TimeValues", CGNS_ENUMV(RealDouble), 1, &count, values.data()));
    std::string names;
    for (std::string name : solutions) {
        name.resize(32, ' ');
        names += name;
    }
    const std::array<cgsize_t, 2> sizes{32, count};
    check(cg_ziter_write(file_, base_, zone_, "Solutions"));
    check(cg_goto(file_, base_, "Zone_t", zone_, "ZoneIterativeData_t", 1, "end"));
    check(cg_array_write("FlowSolutionPointers", CGNS_ENUMV(Character), 2, sizes.data(),
                         names.data()));
    return *this;
}

}  // namespace weldline::test
