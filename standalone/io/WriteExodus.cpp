#include "WriteExodus.h"

#include <vtk_exodusII.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "OpenDataSet.h"
#include "base/Errors.h"

namespace weldline {
namespace {

struct Shape {
    CellKind kind;
    const char* topology;
    int corners;
    const char* name;
};

constexpr std::array<Shape, 4> shapes{{{CellKind::Tetrahedron, "TET4", 4, "tetrahedra"},
                                       {CellKind::Pyramid, "PYRAMID5", 5, "pyramids"},
                                       {CellKind::Wedge, "WEDGE6", 6, "wedges"},
                                       {CellKind::Hexahedron, "HEX8", 8, "hexahedra"}}};

// The cells of one shape.
struct ShapeBlock {
    Shape shape;
    std::vector<int> cells;
};

std::vector<ShapeBlock> blocksOf(const CellMesh& mesh) {
    std::vector<ShapeBlock> blocks;
    for (const Shape& shape : shapes) {
        ShapeBlock block{shape, {}};
        for (int c = 0; c < mesh.cellCount(); ++c) {
            if (mesh.kinds[static_cast<std::size_t>(c)] == shape.kind) {
                block.cells.push_back(c);
            }
        }
        if (!block.cells.empty()) {
            blocks.push_back(std::move(block));
        }
    }
    return blocks;
}

// The first triangle of a wedge must look at the second.
void orientWedge(const std::vector<Vec3>& points, int* corners) {
    const auto at = [&](int i) { return points[static_cast<std::size_t>(corners[i] - 1)]; };
    if (dot(cross(at(1) - at(0), at(2) - at(0)), at(3) - at(0)) < 0.0) {
        std::swap_ranges(corners, corners + 3, corners + 3);
    }
}

std::vector<int> cornersOf(const CellMesh& mesh, const ShapeBlock& block) {
    std::vector<int> corners;
    for (const int cell : block.cells) {
        for (const int node : mesh.cellNodes[cell]) {
            corners.push_back(node + 1);
        }
        if (block.shape.kind == CellKind::Wedge) {
            orientWedge(mesh.points, corners.data() + corners.size() - 6);
        }
    }
    return corners;
}

class ExodusFile {
  public:
    ExodusFile(const std::string& path, const std::string& file) : file_(file) {
        ex_opts(0);
        int here = sizeof(double);
        int there = sizeof(double);
        errno = 0;
        id_ = ex_create(path.c_str(), EX_CLOBBER | EX_64BIT_OFFSET, &here, &there);
        check(id_ < 0 ? EX_FATAL : EX_NOERR);
    }

    ~ExodusFile() {
        if (id_ >= 0) {
            ex_close(id_);
        }
    }

    ExodusFile(const ExodusFile&) = delete;
    ExodusFile& operator=(const ExodusFile&) = delete;

    // What is still in memory may meet a full disk.
    void close() {
        const int id = std::exchange(id_, -1);
        check(ex_close(id));
    }

    void putMesh(const CellMesh& mesh, const std::vector<ShapeBlock>& blocks) {
        check(ex_put_init(id_, "Weld lines", 3, static_cast<std::int64_t>(mesh.points.size()),
                          mesh.cellCount(), static_cast<std::int64_t>(blocks.size()), 0, 0));
        putPoints(mesh.points);
        std::vector<int> numbers;
        int id = 0;
        for (const ShapeBlock& block : blocks) {
            check(ex_put_block(id_, EX_ELEM_BLOCK, ++id, block.shape.topology,
                               static_cast<std::int64_t>(block.cells.size()), block.shape.corners,
                               0, 0, 0));
            check(ex_put_name(id_, EX_ELEM_BLOCK, id, block.shape.name));
            check(ex_put_conn(id_, EX_ELEM_BLOCK, id, cornersOf(mesh, block).data(), nullptr,
                              nullptr));
            for (const int cell : block.cells) {
                numbers.push_back(cell + 1);
            }
        }
        check(ex_put_id_map(id_, EX_ELEM_MAP, numbers.data()));
    }

    void putNames(ex_entity_type where, const std::vector<std::string>& names) {
        std::vector<std::string> copies = names;
        std::vector<char*> texts;
        texts.reserve(names.size());
        for (std::string& name : copies) {
            texts.push_back(name.data());
        }
        const auto count = static_cast<int>(names.size());
        check(ex_put_variable_param(id_, where, count));
        check(ex_put_variable_names(id_, where, count, texts.data()));
    }

    void putTime(double time) { check(ex_put_time(id_, 1, &time)); }

    // `block` counts from 1; variables, too.
    void putValues(ex_entity_type where, int variable, int block,
                   const std::vector<double>& values) {
        check(ex_put_var(id_, 1, where, variable, block, static_cast<std::int64_t>(values.size()),
                         values.data()));
    }

  private:
    void putPoints(const std::vector<Vec3>& points) {
        std::array<std::vector<double>, 3> columns;
        for (const Vec3 point : points) {
            columns[0].push_back(point.x);
            columns[1].push_back(point.y);
            columns[2].push_back(point.z);
        }
        check(ex_put_coord(id_, columns[0].data(), columns[1].data(), columns[2].data()));
    }

    // Warnings are above zero.
    void check(int status) const {
        if (status < 0) {
            const int reason = errno;
            throw RunError("cannot write '" + file_ + "': " +
                           (reason > 0 ? std::generic_category().message(reason)
                                       : "the Exodus library reports an error"));
        }
    }

    std::string file_;
    int id_ = -1;
};

template <class Value>
std::vector<double> inBlock(const ShapeBlock& block, Value valueOf) {
    std::vector<double> values;
    values.reserve(block.cells.size());
    for (const int cell : block.cells) {
        values.push_back(valueOf(static_cast<std::size_t>(cell)));
    }
    return values;
}

void putNodeVariables(ExodusFile& exodus, const ResultFields& fields) {
    std::vector<std::string> names{"MeetingAngle", "WeldLine"};
    if (!fields.refusalReason.empty()) {
        names.emplace_back("RefusalReason");
    }
    exodus.putNames(EX_NODAL, names);
    exodus.putValues(EX_NODAL, 1, 1, fields.meetingAngle);
    exodus.putValues(EX_NODAL, 2, 1, {fields.weldLine.begin(), fields.weldLine.end()});
    if (names.size() == 3) {
        exodus.putValues(EX_NODAL, 3, 1,
                         {fields.refusalReason.begin(), fields.refusalReason.end()});
    }
}

void putElementVariables(ExodusFile& exodus, const std::vector<ShapeBlock>& blocks,
                         const ResultFields& fields) {
    exodus.putNames(EX_ELEM_BLOCK,
                    {"FillTime", "FlowDirectionX", "FlowDirectionY", "FlowDirectionZ"});
    int id = 0;
    for (const ShapeBlock& block : blocks) {
        ++id;
        exodus.putValues(EX_ELEM_BLOCK, 1, id,
                         inBlock(block, [&](std::size_t c) { return fields.fillTime[c]; }));
        int variable = 1;
        for (double Vec3::*component : {&Vec3::x, &Vec3::y, &Vec3::z}) {
            exodus.putValues(EX_ELEM_BLOCK, ++variable, id, inBlock(block, [&](std::size_t c) {
                                 return fields.flowDirection[c].*component;
                             }));
        }
    }
}

}  // namespace

bool isExodusName(const std::string& file) {
    const std::string extension = lowerExtension(file);
    return extension == ".exo" || extension == ".e" || extension == ".ex2";
}

void refusePolyhedra(const std::string& file, const CellMesh& mesh) {
    if (std::count(mesh.kinds.begin(), mesh.kinds.end(), CellKind::Polyhedron) > 0) {
        throw InputError("'" + file +
                         "': an Exodus file takes no polyhedra, and the mesh has some; give the "
                         "result the ending .vtu");
    }
}

void writeExodus(const std::string& path, const std::string& file, const CellMesh& mesh,
                 const ResultFields& fields) {
    const std::vector<ShapeBlock> blocks = blocksOf(mesh);
    ExodusFile exodus(path, file);
    exodus.putMesh(mesh, blocks);
    putNodeVariables(exodus, fields);
    putElementVariables(exodus, blocks, fields);
    exodus.putTime(0.0);
    exodus.close();
}

}  // namespace weldline
