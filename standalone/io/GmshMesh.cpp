#include "GmshMesh.h"

#include <vtkCellType.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <unordered_map>
#include <utility>

#include "GmshCursor.h"
#include "OpenDataSet.h"

namespace weldline {

namespace {

struct Shape {
    int vtkType = 0;
    int dimension = 0;
    std::size_t nodes = 0;
};

// By gmsh's number of the element type. Corners of these shapes come in VTK's order.
const std::map<std::int64_t, Shape> shapes{{1, {VTK_LINE, 1, 2}},       {2, {VTK_TRIANGLE, 2, 3}},
                                           {3, {VTK_QUAD, 2, 4}},       {4, {VTK_TETRA, 3, 4}},
                                           {5, {VTK_HEXAHEDRON, 3, 8}}, {6, {VTK_WEDGE, 3, 6}},
                                           {7, {VTK_PYRAMID, 3, 5}},    {15, {VTK_VERTEX, 0, 1}}};

class GmshParser {
  public:
    explicit GmshParser(GmshCursor& cursor) : cursor_(cursor) {}

    GmshMesh parse() {
        readFormat();
        for (std::string name = cursor_.nextSection(); !name.empty();
             name = cursor_.nextSection()) {
            readSection(name);
            cursor_.leaveSection(name);
        }
        if (!hasNodes_ || !hasElements_) cursor_.fail("'$Nodes' or '$Elements' is missing");
        numberPatches();
        return std::move(mesh_);
    }

  private:
    using Entity = std::pair<std::int64_t, std::int64_t>;  // dimension and number

    void readFormat() {
        if (cursor_.line() != "$MeshFormat")
            failOnInput(cursor_.file(),
                        "the file holds no gmsh mesh: it does not start with '$MeshFormat'");
        const std::string format = cursor_.line();
        const bool isOld = format.starts_with("2");
        if (format.empty()) cursor_.fail("it ends too early");
        if (!isOld && !format.starts_with("4.1 "))
            failOnInput(cursor_.file(),
                        "gmsh format '" + format.substr(0, 20) +
                            "'; 2.2 and 4.1 can be read (gmsh -format msh41 writes it)");
        isNew_ = !isOld;
        const std::size_t kind = format.find(' ');
        if (kind == std::string::npos || !format.ends_with(" 8"))
            cursor_.fail("its first line is '" + format.substr(0, 20) + "'");
        if (format[kind + 1] == '1') {
            cursor_.startBinary();
            if (cursor_.integer() != 1)
                failOnInput(cursor_.file(),
                            "the gmsh file has another order of bytes; write it in text");
        }
        cursor_.leaveSection("MeshFormat");
    }

    void readSection(const std::string& name) {
        if (name == "PhysicalNames") readPhysicalNames();
        if (name == "Entities" && isNew_) readEntities();
        if (name == "Nodes") isNew_ ? readNodeBlocks() : readNodes();
        if (name == "Elements") isNew_ ? readElementBlocks() : readElements();
        if (name == "ElementData") mesh_.data.push_back(passElementData(cursor_));
    }

    // dimension, number and "name" in a line, also in binary files
    void readPhysicalNames() {
        for (std::int64_t left = cursor_.lineNumber(); left > 0; --left) {
            const std::string line = cursor_.line();
            const std::size_t open = line.find('"');
            const std::size_t close = line.rfind('"');
            if (close == open) cursor_.fail("a physical group has no name");
            char* end = nullptr;
            const long dimension = std::strtol(line.c_str(), &end, 10);
            const long number = std::strtol(end, &end, 10);
            if (dimension == 2) groupNames_[number] = line.substr(open + 1, close - open - 1);
        }
    }

    void readEntities() {
        std::array<std::size_t, 4> counts{};
        for (std::size_t& count : counts) count = cursor_.count(cursor_.size(), 4);
        for (std::size_t dimension = 0; dimension < counts.size(); ++dimension)
            for (std::size_t left = counts[dimension]; left > 0; --left)
                readEntity(static_cast<std::int64_t>(dimension));
    }

    void readEntity(std::int64_t dimension) {
        const std::int64_t number = cursor_.integer();
        for (int i = 0; i < (dimension == 0 ? 3 : 6); ++i) cursor_.real();  // place or box
        for (std::size_t left = cursor_.count(cursor_.size(), 1); left > 0; --left) {
            // A negative number turns the surface round.
            const std::int64_t group = std::abs(cursor_.integer());
            groupOfEntity_.emplace(Entity{dimension, number}, group);
        }
        if (dimension == 0) return;
        for (std::size_t left = cursor_.count(cursor_.size(), 1); left > 0; --left)
            cursor_.integer();  // bounds of the entity
    }

    void addNode(std::int64_t number) {
        Vec3 point;
        for (double* x : {&point.x, &point.y, &point.z}) *x = cursor_.real();
        if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z))
            cursor_.fail("node " + std::to_string(number) + " has no place");
        if (!nodeOf_.emplace(number, static_cast<int>(mesh_.points.size())).second)
            cursor_.fail("node " + std::to_string(number) + " stands twice");
        mesh_.points.push_back(point);
    }

    void readNodes() {
        hasNodes_ = true;
        for (std::size_t left = cursor_.count(cursor_.lineNumber(), 4); left > 0; --left)
            addNode(cursor_.integer());
    }

    void readNodeBlocks() {
        hasNodes_ = true;
        const std::size_t blocks = cursor_.count(cursor_.size(), 4);
        for (int i = 0; i < 3; ++i) cursor_.size();  // nodes in all, smallest and largest number
        for (std::size_t block = 0; block < blocks; ++block) {
            const std::int64_t dimension = cursor_.integer();
            cursor_.integer();  // of the entity
            const bool hasParameters = cursor_.integer() != 0;
            std::vector<std::int64_t> numbers(cursor_.count(cursor_.size(), 4));
            for (std::int64_t& number : numbers) number = cursor_.size();
            for (const std::int64_t number : numbers) {
                addNode(number);
                for (std::int64_t i = 0; hasParameters && i < dimension; ++i) cursor_.real();
            }
        }
    }

    const Shape& shapeOf(std::int64_t type) const {
        const auto shape = shapes.find(type);
        if (shape == shapes.end())
            failOnInput(cursor_.file(),
                        "the gmsh file has elements of type " + std::to_string(type) +
                            "; elements of first order can be read (gmsh -order 1)");
        return shape->second;
    }

    // The nodes of the element come next.
    void addElement(std::int64_t number, const Shape& shape, std::int64_t group, bool asSize) {
        std::array<int, 8> nodes{};
        for (std::size_t i = 0; i < shape.nodes; ++i) {
            const std::int64_t node = asSize ? cursor_.size() : cursor_.integer();
            const auto known = nodeOf_.find(node);
            if (known == nodeOf_.end())
                cursor_.fail("element " + std::to_string(number) + " names node " +
                             std::to_string(node) + ", which is not there");
            nodes.at(i) = known->second;
        }
        if (shape.dimension < 2 || (shape.dimension == 2 && group == 0)) return;
        mesh_.elements.push_back(number);
        mesh_.types.push_back(shape.vtkType);
        groups_.push_back(shape.dimension == 2 ? group : 0);
        mesh_.nodes.append(std::span(nodes).first(shape.nodes));
    }

    void readElements() {
        hasElements_ = true;
        const std::size_t count = cursor_.count(cursor_.lineNumber(), 3);
        // In binary files elements of one type and one number of tags have one head.
        for (std::size_t read = 0; read < count;) {
            std::int64_t number = cursor_.isBinary() ? 0 : cursor_.integer();
            const Shape& shape = shapeOf(cursor_.integer());
            const std::size_t inBlock =
                cursor_.isBinary() ? cursor_.count(cursor_.integer(), 2) : 1;
            const std::size_t tags = cursor_.count(cursor_.integer(), 1);
            if (inBlock == 0 || inBlock > count - read)
                cursor_.fail("a block of elements is empty or too long");
            for (std::size_t i = 0; i < inBlock; ++i, ++read) {
                if (cursor_.isBinary()) number = cursor_.integer();
                std::int64_t group = 0;
                for (std::size_t tag = 0; tag < tags; ++tag) {
                    const std::int64_t value = cursor_.integer();
                    if (tag == 0) group = std::abs(value);
                }
                addElement(number, shape, group, false);
            }
        }
    }

    void readElementBlocks() {
        hasElements_ = true;
        const std::size_t blocks = cursor_.count(cursor_.size(), 4);
        for (int i = 0; i < 3; ++i) cursor_.size();  // elements in all, smallest, largest number
        for (std::size_t block = 0; block < blocks; ++block) {
            const std::int64_t dimension = cursor_.integer();
            const auto entity = groupOfEntity_.find({dimension, cursor_.integer()});
            const std::int64_t group = entity == groupOfEntity_.end() ? 0 : entity->second;
            const Shape& shape = shapeOf(cursor_.integer());
            for (std::size_t left = cursor_.count(cursor_.size(), 2); left > 0; --left) {
                const std::int64_t number = cursor_.size();
                addElement(number, shape, group, true);
            }
        }
    }

    void numberPatches() {
        std::map<std::int64_t, int> patchOf;
        for (const std::int64_t group : groups_)
            if (group != 0) patchOf[group] = 0;
        for (auto& [group, patch] : patchOf) {
            patch = static_cast<int>(mesh_.patchNames.size());
            const auto name = groupNames_.find(group);
            mesh_.patchNames.push_back(name == groupNames_.end() ? std::to_string(group)
                                                                 : name->second);
        }
        for (const std::int64_t group : groups_)
            mesh_.patches.push_back(group == 0 ? -1 : patchOf[group]);
    }

    GmshCursor& cursor_;
    GmshMesh mesh_;
    bool isNew_ = false;
    bool hasNodes_ = false;
    bool hasElements_ = false;
    std::map<std::int64_t, std::string> groupNames_;  // of physical surfaces
    std::map<Entity, std::int64_t> groupOfEntity_;    // the first
    std::unordered_map<std::int64_t, int> nodeOf_;    // point, by the file's number
    std::vector<std::int64_t> groups_;                // per element of the mesh; 0 for a volume
};

}  // namespace

GmshMesh readGmshMesh(GmshCursor& cursor) {
    return GmshParser(cursor).parse();
}

}  // namespace weldline
