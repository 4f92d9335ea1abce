#include "CgnsFile.h"

#include <vtk_cgns.h>

#include <array>

// clang-format off
#include VTK_CGNS(cgnslib.h)
// clang-format on

#include "OpenDataSet.h"

namespace weldline {
namespace {

using ElementType = CGNS_ENUMT(ElementType_t);

// Room for names of 32 characters; that of a family may be a path of 20 of them.
using Name = std::array<char, 33>;
using Path = std::array<char, 20 * 33 + 1>;

// Corners of a surface element, 0 for all others.
int surfaceCorners(ElementType type) {
    if (type == CGNS_ENUMV(TRI_3)) {
        return 3;
    }
    return type == CGNS_ENUMV(QUAD_4) ? 4 : 0;
}

// Connectivity as a file has it: of element e the entries from starts[e] to starts[e + 1].
struct Elements {
    std::vector<cgsize_t> data;
    std::vector<cgsize_t> starts;
};

// The corners of all elements, from 0, none for one that is no surface. In a mixed section the type
// stands before the corners. False where a number lies outside its list.
bool takeCorners(const Elements& elements, bool isMixed, std::int64_t points, Rows& rows) {
    const auto size = static_cast<cgsize_t>(elements.data.size());
    std::vector<int> row;
    for (std::size_t e = 0; e + 1 < elements.starts.size(); ++e) {
        cgsize_t at = elements.starts[e];
        const cgsize_t end = elements.starts[e + 1];
        if (at < 0 || end < at || end > size) {
            return false;
        }
        row.clear();
        if (isMixed && at < end) {
            const auto type = static_cast<ElementType>(elements.data[static_cast<std::size_t>(at)]);
            at = surfaceCorners(type) == end - at - 1 ? at + 1 : end;
        }
        for (; at < end; ++at) {
            const cgsize_t corner = elements.data[static_cast<std::size_t>(at)];
            if (corner < 1 || corner > points) {
                return false;
            }
            row.push_back(static_cast<int>(corner - 1));
        }
        rows.append(row);
    }
    return true;
}

std::string lastOfPath(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

CgnsFile::CgnsFile(const std::string& file) : file_(file) {
    check(cg_open(file.c_str(), CG_MODE_READ, &number_));
}

CgnsFile::~CgnsFile() {
    cg_close(number_);
}

void CgnsFile::check(int status) const {
    if (status != CG_OK) {
        failOnInput(file_,
                    "the file is damaged or incomplete (" + std::string(cg_get_error()) + ")");
    }
}

bool CgnsFile::hasVolumes(int base) const {
    Name name{};
    int cellDimension = 0;
    int physicalDimension = 0;
    check(cg_base_read(number_, base, name.data(), &cellDimension, &physicalDimension));
    return cellDimension == 3 && physicalDimension == 3;
}

std::vector<CgnsZone> CgnsFile::zones() const {
    std::vector<CgnsZone> zones;
    int bases = 0;
    check(cg_nbases(number_, &bases));
    for (int base = 1; base <= bases; ++base) {
        int count = 0;
        check(cg_nzones(number_, base, &count));
        for (int zone = 1; zone <= count && hasVolumes(base); ++zone) {
            auto type = CGNS_ENUMV(ZoneTypeNull);
            check(cg_zone_type(number_, base, zone, &type));
            if (type == CGNS_ENUMV(Unstructured)) {
                zones.push_back(readZone(base, zone));
            }
        }
    }
    return zones;
}

CgnsZone CgnsFile::readZone(int base, int zone) const {
    Name name{};
    std::array<cgsize_t, 9> sizes{};
    check(cg_zone_read(number_, base, zone, name.data(), sizes.data()));
    CgnsZone found;
    int count = 0;
    check(cg_nsections(number_, base, zone, &count));
    for (int section = 1; section <= count; ++section) {
        found.sections.push_back(readSection(base, zone, section, sizes[0]));
    }
    check(cg_nbocos(number_, base, zone, &count));
    for (int condition = 1; condition <= count; ++condition) {
        found.conditions.push_back(readCondition(base, zone, condition));
    }
    found.points = readPoints(base, zone, sizes[0]);
    return found;
}

std::vector<Vec3> CgnsFile::readPoints(int base, int zone, std::int64_t count) const {
    std::vector<Vec3> points(static_cast<std::size_t>(count));
    std::vector<double> values(points.size());
    const auto read = [&](const char* name, double Vec3::*component) {
        const cgsize_t first = 1;
        const cgsize_t last = count;
        check(cg_coord_read(number_, base, zone, name, CGNS_ENUMV(RealDouble), &first, &last,
                            values.data()));
        for (std::size_t p = 0; p < points.size(); ++p) {
            points[p].*component = values[p];
        }
    };
    read("CoordinateX", &Vec3::x);
    read("CoordinateY", &Vec3::y);
    read("CoordinateZ", &Vec3::z);
    return points;
}

CgnsSection CgnsFile::readSection(int base, int zone, int section, std::int64_t points) const {
    Name name{};
    auto type = CGNS_ENUMV(ElementTypeNull);
    cgsize_t first = 0;
    cgsize_t last = 0;
    int boundaryElements = 0;
    int hasParents = 0;
    check(cg_section_read(number_, base, zone, section, name.data(), &type, &first, &last,
                          &boundaryElements, &hasParents));
    CgnsSection found{name.data(), first, type == CGNS_ENUMV(NGON_n), {}};
    const bool isMixed = type == CGNS_ENUMV(MIXED);
    if (surfaceCorners(type) == 0 && !isMixed && !found.isFaceList) {
        return found;
    }
    cgsize_t size = 0;
    check(cg_ElementDataSize(number_, base, zone, section, &size));
    require(first >= 1 && last >= first && size >= 0, found.name);
    Elements elements{std::vector<cgsize_t>(static_cast<std::size_t>(size)),
                      std::vector<cgsize_t>(static_cast<std::size_t>(last - first + 2))};
    if (isMixed || found.isFaceList) {
        check(cg_poly_elements_partial_read(number_, base, zone, section, first, last,
                                            elements.data.data(), elements.starts.data(), nullptr));
    } else {
        check(cg_elements_read(number_, base, zone, section, elements.data.data(), nullptr));
        for (std::size_t e = 0; e < elements.starts.size(); ++e) {
            elements.starts[e] = static_cast<cgsize_t>(e) * surfaceCorners(type);
        }
    }
    require(takeCorners(elements, isMixed, points, found.corners), found.name);
    return found;
}

void CgnsFile::require(bool isSound, const std::string& name) const {
    if (!isSound) {
        failOnInput(file_, "the elements of its section '" + name +
                               "' do not fit each other and their points; the file is damaged");
    }
}

CgnsCondition CgnsFile::readCondition(int base, int zone, int condition) const {
    Name name{};
    auto type = CGNS_ENUMV(BCTypeNull);
    auto set = CGNS_ENUMV(PointSetTypeNull);
    cgsize_t count = 0;
    int normalIndex = 0;
    cgsize_t normals = 0;
    auto normalType = CGNS_ENUMV(DataTypeNull);
    int dataSets = 0;
    check(cg_boco_info(number_, base, zone, condition, name.data(), &type, &set, &count,
                       &normalIndex, &normals, &normalType, &dataSets));
    auto location = CGNS_ENUMV(Vertex);
    check(cg_boco_gridlocation_read(number_, base, zone, condition, &location));
    std::vector<cgsize_t> members(static_cast<std::size_t>(count));
    check(cg_boco_read(number_, base, zone, condition, members.data(), nullptr));
    CgnsCondition found{familyOf(base, zone, condition), location == CGNS_ENUMV(Vertex), {}};
    if (found.name.empty()) {
        found.name = name.data();
    }
    const bool isRange = set == CGNS_ENUMV(PointRange) || set == CGNS_ENUMV(ElementRange);
    if (isRange && count == 2) {
        found.members = {{members[0], members[1]}};
    } else if (!isRange) {
        for (const cgsize_t member : members) {
            found.members.push_back({member, member});
        }
    }
    return found;
}

std::string CgnsFile::familyOf(int base, int zone, int condition) const {
    check(cg_goto(number_, base, "Zone_t", zone, "ZoneBC_t", 1, "BC_t", condition, "end"));
    Path family{};
    return cg_famname_read(family.data()) == CG_OK ? lastOfPath(family.data()) : std::string();
}

}  // namespace weldline
