#include "InputForms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <map>
#include <numeric>

#include "mesh/FvMesh.h"
#include "partition/SplitMesh.h"

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

template <class Value>
std::string number(Value value) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

// Numbers of the VTK file format: triangle, quad, polygon.
int surfaceType(std::size_t corners) {
    return corners == 3 ? 5 : corners == 4 ? 9 : 7;
}

template <class Values>
std::string joined(const Values& values) {
    std::string text;
    for (const auto value : values) text += number(value) + " ";
    return text;
}

std::string dataArray(const std::string& name, const std::string& type, const std::string& values,
                      int components = 1) {
    return "<DataArray type=\"" + type + "\" Name=\"" + name + "\" NumberOfComponents=\"" +
           std::to_string(components) + "\" format=\"ascii\">\n" + values + "\n</DataArray>\n";
}

std::string vtkFile(const std::string& type, const std::string& content) {
    return "<VTKFile type=\"" + type +
           "\" version=\"1.0\" byte_order=\"LittleEndian\" header_type=\"UInt64\">\n<" + type +
           ">\n" + content + "</" + type + ">\n</VTKFile>\n";
}

// One unstructured grid, cell by cell.
struct GridWriter {
    explicit GridWriter(const std::vector<Vec3>& points) {
        count = points.size();
        for (const Vec3 p : points)
            coordinates += number(p.x) + " " + number(p.y) + " " + number(p.z) + "\n";
    }

    void cell(int type, std::span<const int> nodes, double time, int patch, int ghost = 0) {
        connectivity.insert(connectivity.end(), nodes.begin(), nodes.end());
        offsets.push_back(connectivity.size());
        types.push_back(type);
        times.push_back(time);
        patches.push_back(patch);
        ghosts.push_back(ghost);
        faceOffsets.push_back(-1);
    }

    void cellOf(const MeshPart& part, int c, int ghost) {
        // By CellKind.
        constexpr std::array types3{10, 14, 13, 12, 42};
        const CellMesh& mesh = part.mesh;
        const CellKind kind = mesh.kinds[static_cast<std::size_t>(c)];
        cell(types3[static_cast<std::size_t>(kind)], mesh.cellNodes[c],
             part.cellFields[0][static_cast<std::size_t>(c)], 0, ghost);
        if (kind != CellKind::Polyhedron) return;
        faces.push_back(static_cast<int>(mesh.cellPolygons[c].size()));
        for (const int polygon : mesh.cellPolygons[c]) {
            faces.push_back(static_cast<int>(mesh.polygons[polygon].size()));
            faces.insert(faces.end(), mesh.polygons[polygon].begin(), mesh.polygons[polygon].end());
        }
        faceOffsets.back() = static_cast<long long>(faces.size());
    }

    void surface(std::span<const int> nodes, int patch) {
        cell(surfaceType(nodes.size()), nodes, 0.0, patch);
    }

    std::string text(bool withGhosts = false) const {
        std::string cellData = dataArray("FillTime", "Float64", joined(times)) +
                               dataArray("PatchId", "Int32", joined(patches));
        if (withGhosts) cellData += dataArray("vtkGhostType", "UInt8", joined(ghosts));
        std::string cells = dataArray("connectivity", "Int64", joined(connectivity)) +
                            dataArray("offsets", "Int64", joined(offsets)) +
                            dataArray("types", "UInt8", joined(types));
        if (!faces.empty())
            cells += dataArray("faces", "Int64", joined(faces)) +
                     dataArray("faceoffsets", "Int64", joined(faceOffsets));
        return vtkFile("UnstructuredGrid",
                       "<Piece NumberOfPoints=\"" + std::to_string(count) + "\" NumberOfCells=\"" +
                           std::to_string(types.size()) + "\">\n<CellData>\n" + cellData +
                           "</CellData>\n<Points>\n" +
                           dataArray("Points", "Float64", coordinates, 3) + "</Points>\n<Cells>\n" +
                           cells + "</Cells>\n</Piece>\n");
    }

    std::size_t count;
    std::string coordinates;
    std::vector<int> connectivity, types, patches, ghosts, faces;
    std::vector<std::size_t> offsets;
    std::vector<double> times;
    std::vector<long long> faceOffsets;
};

GridWriter cellsOf(const MeshPart& part) {
    GridWriter grid(part.mesh.points);
    for (int c = 0; c < part.mesh.cellCount(); ++c) grid.cellOf(part, c, 0);
    return grid;
}

void addPatches(const std::vector<Patch>& patches, GridWriter& grid) {
    for (std::size_t p = 0; p < patches.size(); ++p)
        for (int f = 0; f < patches[p].faces.count(); ++f)
            grid.surface(patches[p].faces[f], static_cast<int>(p) + 1);
}

std::string foamHeader(const std::string& type, const std::string& object) {
    return "FoamFile\n{\n version 2.0;\n format ascii;\n class " + type + ";\n object " + object +
           ";\n}\n";
}

template <class Values, class Text>
std::string foamList(const Values& values, Text text) {
    std::string list = std::to_string(values.size()) + "\n(\n";
    for (const auto& value : values) list += text(value) + "\n";
    return list + ")\n";
}

// Faces of a part in the order that a case wants: inner ones, then patch by patch, then those in no
// patch, which lie between processes.
struct CaseFaces {
    std::vector<int> order;
    std::vector<std::pair<std::string, std::size_t>> patches;  // name, number of faces

    CaseFaces(const FvMesh& mesh, const MeshPart& part, const MeshPart& whole) {
        order.resize(static_cast<std::size_t>(mesh.innerFaces));
        std::iota(order.begin(), order.end(), 0);
        std::map<std::vector<int>, int> faceOf;
        for (int f = mesh.innerFaces; f < mesh.faceCount(); ++f)
            faceOf[sorted(mesh.faceNodes[f])] = f;
        const auto take = [&](const std::vector<int>& nodes) {
            const auto found = faceOf.find(nodes);
            if (found == faceOf.end()) return;
            order.push_back(found->second);
            faceOf.erase(found);
        };
        for (const Patch& patch : part.patches) {
            const std::size_t before = order.size();
            for (int f = 0; f < patch.faces.count(); ++f) take(sorted(patch.faces[f]));
            patches.emplace_back(patch.name, order.size() - before);
        }
        // What bounds the whole, too, is wall.
        const FvMesh uncut = buildFvMesh(whole.mesh);
        const std::size_t beforeWalls = order.size();
        for (int f = uncut.innerFaces; f < uncut.faceCount(); ++f) take(inPart(part, uncut, f));
        patches.emplace_back("walls", order.size() - beforeWalls);
        const std::size_t beforeOthers = order.size();
        while (!faceOf.empty()) take(std::vector<int>(faceOf.begin()->first));
        if (order.size() > beforeOthers)
            patches.emplace_back("procBoundary", order.size() - beforeOthers);
    }

    static std::vector<int> sorted(std::span<const int> nodes) {
        std::vector<int> list(nodes.begin(), nodes.end());
        std::sort(list.begin(), list.end());
        return list;
    }

    // The part's numbers of the nodes of a face of the whole; empty where it lacks one.
    static std::vector<int> inPart(const MeshPart& part, const FvMesh& uncut, int face) {
        std::vector<int> list;
        for (const int node : uncut.faceNodes[face]) {
            const auto at = std::lower_bound(part.nodeNumber.begin(), part.nodeNumber.end(), node);
            if (at == part.nodeNumber.end() || *at != node) return {};
            list.push_back(static_cast<int>(at - part.nodeNumber.begin()));
        }
        std::sort(list.begin(), list.end());
        return list;
    }
};

std::string boundaryText(const FvMesh& mesh, const CaseFaces& faces) {
    std::string text =
        foamHeader("polyBoundaryMesh", "boundary") + std::to_string(faces.patches.size()) + "\n(\n";
    auto start = static_cast<std::size_t>(mesh.innerFaces);
    for (const auto& [name, count] : faces.patches) {
        const std::string type = name == "walls" ? "wall" : "patch";
        text += name + "\n{\n type " + (name == "procBoundary" ? "processor" : type) +
                ";\n nFaces " + std::to_string(count) + ";\n startFace " + std::to_string(start) +
                ";\n myProcNo 0;\n neighbProcNo 1;\n}\n";
        start += count;
    }
    return text + ")\n";
}

}  // namespace

InputForms::InputForms(fs::path folder, const MeshPart& whole, const std::vector<int>& partOfCell,
                       int pieces)
    : m_folder(std::move(folder)), m_whole(whole), m_partOfCell(partOfCell), m_pieces(pieces) {}

std::string InputForms::put(const fs::path& name, const std::string& text) const {
    const fs::path file = m_folder / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
}

std::vector<MeshPart> InputForms::parts() const {
    MeshSplitter splitter(m_whole, m_partOfCell, m_pieces);
    std::vector<MeshPart> list;
    list.reserve(static_cast<std::size_t>(m_pieces));
    for (int p = 0; p < m_pieces; ++p) list.push_back(splitter.part(p));
    return list;
}

std::string InputForms::vtu() const {
    GridWriter grid = cellsOf(m_whole);
    addPatches(m_whole.patches, grid);
    return put("whole.vtu", grid.text());
}

std::string InputForms::listPieces(const std::string& name,
                                   const std::vector<std::string>& texts) const {
    std::string list = "<PCellData><PDataArray type=\"Float64\" Name=\"FillTime\"/></PCellData>\n";
    for (std::size_t p = 0; p < texts.size(); ++p) {
        const std::string piece = name + std::to_string(p) + ".vtu";
        put(piece, texts[p]);
        list += "<Piece Source=\"" + piece + "\"/>\n";
    }
    return put(name + ".pvtu", vtkFile("PUnstructuredGrid", list));
}

std::string InputForms::pvtu() const {
    std::vector<std::string> texts;
    for (const MeshPart& part : parts()) texts.push_back(cellsOf(part).text());
    GridWriter grid(m_whole.mesh.points);
    addPatches(m_whole.patches, grid);
    texts.push_back(grid.text());
    return listPieces("pieces", texts);
}

std::string InputForms::pvtuGhosts() const {
    std::vector<std::string> texts;
    for (int p = 0; p < m_pieces; ++p) {
        GridWriter grid(m_whole.mesh.points);
        bool hasGhost = false;
        for (int c = 0; c < m_whole.mesh.cellCount(); ++c) {
            const int owner = m_partOfCell[static_cast<std::size_t>(c)];
            const bool isGhost = owner == (p + 1) % m_pieces && owner != p && !hasGhost;
            if (owner == p || isGhost) grid.cellOf(m_whole, c, isGhost ? 1 : 0);
            hasGhost = hasGhost || isGhost;
        }
        texts.push_back(grid.text(true));
    }
    return listPieces("ghosts", texts);
}

std::string InputForms::vtm() const {
    std::string blocks;
    int index = 0;
    const auto add = [&](const std::string& name, const std::string& text) {
        const std::string file = "block" + std::to_string(index) + ".vtu";
        put(file, text);
        blocks += "<DataSet index=\"" + std::to_string(index++) + "\" name=\"" + name +
                  "\" file=\"" + file + "\"/>\n";
    };
    for (const MeshPart& part : parts()) add("volume", cellsOf(part).text());
    for (const Patch& patch : m_whole.patches) {
        GridWriter grid(m_whole.mesh.points);
        addPatches({patch}, grid);
        add(patch.name, grid.text());
    }
    return put("blocks.vtm", vtkFile("vtkMultiBlockDataSet", blocks));
}

void InputForms::putCase(const fs::path& folder, const MeshPart& part) const {
    const FvMesh mesh = buildFvMesh(part.mesh);
    const CaseFaces faces(mesh, part, m_whole);
    const fs::path place = folder / "constant" / "polyMesh";
    put(place / "points", foamHeader("vectorField", "points") + foamList(mesh.points, [](Vec3 p) {
                              return "(" + number(p.x) + " " + number(p.y) + " " + number(p.z) +
                                     ")";
                          }));
    put(place / "faces", foamHeader("faceList", "faces") + foamList(faces.order, [&](int f) {
                             return std::to_string(mesh.faceNodes[f].size()) + "(" +
                                    joined(mesh.faceNodes[f]) + ")";
                         }));
    put(place / "owner", foamHeader("labelList", "owner") + foamList(faces.order, [&](int f) {
                             return std::to_string(mesh.owner[static_cast<std::size_t>(f)]);
                         }));
    put(place / "neighbour",
        foamHeader("labelList", "neighbour") +
            foamList(mesh.neighbour, [](int cell) { return std::to_string(cell); }));
    put(place / "boundary", boundaryText(mesh, faces));
    put(folder / "2" / "fillTime",
        foamHeader("volScalarField", "fillTime") +
            "dimensions [0 0 1 0 0 0 0];\ninternalField nonuniform List<scalar>\n" +
            foamList(part.cellFields[0], [](double value) { return number(value); }) +
            ";\nboundaryField\n{\n}\n");
}

std::string InputForms::foam() const {
    put("case/system/controlDict", foamHeader("dictionary", "controlDict") +
                                       "startFrom startTime; startTime 0; endTime 2; deltaT 1;\n"
                                       "writeControl timeStep; writeInterval 1;\n");
    putCase("case", m_whole);
    return put("case/case.foam", "");
}

std::string InputForms::decomposedFoam() const {
    put("decomposed/system/controlDict",
        foamHeader("dictionary", "controlDict") +
            "startFrom startTime; startTime 0; endTime 2; deltaT 1;\n"
            "writeControl timeStep; writeInterval 1;\n");
    const std::vector<MeshPart> list = parts();
    for (std::size_t p = 0; p < list.size(); ++p)
        putCase("decomposed/processor" + std::to_string(p), list[p]);
    return put("decomposed/decomposed.foam", "");
}

void InputForms::all() const {
    vtu();
    pvtu();
    pvtuGhosts();
    vtm();
    foam();
    decomposedFoam();
}

}  // namespace weldline::test
