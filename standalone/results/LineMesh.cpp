#include "LineMesh.h"

#include <algorithm>
#include <cmath>

#include "comm/Messages.h"
#include "comm/Packing.h"

namespace weldline {

namespace {

// What one rank has, by the numbers of the whole mesh.
struct Cutting {
    struct Node {
        std::int64_t number = 0;
        Vec3 place;
        int line = 0;
        double angle = 180.0;
        double time = 0.0;
    };
    using Link = std::array<std::int64_t, 2>;
    using Polygon = std::vector<std::int64_t>;

    std::vector<Node> nodes;
    std::vector<Link> links;
    std::vector<Polygon> skin;
    std::vector<Polygon> surface;
};

class Cutter {
  public:
    Cutter(const RankPart& part, const FvMesh& mesh, const WeldLines& lines,
           const std::vector<double>& angles, const std::vector<Vec3>& directions)
        : m_part(part), m_mesh(mesh), m_lines(lines), m_angles(angles), m_directions(directions) {}

    Cutting cut() {
        m_isTaken.assign(m_mesh.points.size(), false);
        m_acrossDirections = haloValues(m_part.ranks, m_part.interface, m_directions);
        for (int n = 0; n < m_mesh.pointCount(); ++n)
            if (m_lines.nodeLine[n] > 0) m_isTaken[n] = true;
        linkCells();
        takeFaces();
        for (int n = 0; n < m_mesh.pointCount(); ++n)
            if (m_isTaken[n])
                m_cutting.nodes.push_back({m_part.nodeNumber[n], m_mesh.points[n],
                                           m_lines.nodeLine[n], reportedAngle(m_angles[n]),
                                           m_lines.formationTime[n]});
        return std::move(m_cutting);
    }

  private:
    void linkCells() {
        std::vector<int> weld;
        for (int c = 0; c < m_mesh.cellCount(); ++c) {
            weld.clear();
            for (const int n : m_mesh.cellNodes[c])
                if (m_lines.nodeLine[n] > 0) weld.push_back(n);
            for (std::size_t a = 0; a < weld.size(); ++a)
                for (std::size_t b = a + 1; b < weld.size(); ++b)
                    if (m_lines.nodeLine[weld[a]] == m_lines.nodeLine[weld[b]])
                        link(weld[a], weld[b]);
        }
        std::sort(m_cutting.links.begin(), m_cutting.links.end());
        m_cutting.links.erase(std::unique(m_cutting.links.begin(), m_cutting.links.end()),
                              m_cutting.links.end());
    }

    void link(int a, int b) {
        const std::int64_t first = m_part.nodeNumber[a];
        const std::int64_t second = m_part.nodeNumber[b];
        m_cutting.links.push_back({std::min(first, second), std::max(first, second)});
    }

    void takeFaces() {
        for (int f = 0; f < m_mesh.faceCount(); ++f) {
            const auto polygon = m_mesh.faceNodes[f];
            const bool isSkin = f >= m_mesh.innerFaces && f < m_mesh.firstInterfaceFace();
            if (isSkin) {
                if (std::any_of(polygon.begin(), polygon.end(),
                                [&](int n) { return m_lines.nodeLine[n] > 0; }))
                    take(polygon, m_cutting.skin);
            } else if (isWithinLine(polygon) && isMeeting(f)) {
                take(polygon, m_cutting.surface);
            }
        }
    }

    bool isWithinLine(std::span<const int> polygon) const {
        const int line = m_lines.nodeLine[polygon.front()];
        return line > 0 && std::all_of(polygon.begin(), polygon.end(),
                                       [&](int n) { return m_lines.nodeLine[n] == line; });
    }

    // Of the two ranks of an interface face the lower takes it.
    bool isMeeting(int face) const {
        Vec3 across;
        if (face < m_mesh.innerFaces) {
            across = m_directions[m_mesh.neighbour[face]];
        } else {
            const int halo = m_part.interface.haloOfFace[face - m_mesh.firstInterfaceFace()];
            if (m_part.interface.halo[halo].rank < m_part.ranks.rank()) return false;
            across = m_acrossDirections[halo];
        }
        const Vec3 normal = (1.0 / norm(m_mesh.faceArea[face])) * m_mesh.faceArea[face];
        const double towards = dot(m_directions[m_mesh.owner[face]], normal);
        const double against = dot(across, normal);
        return towards > 0.0 && against < 0.0 && towards - against >= 0.5;
    }

    void take(std::span<const int> polygon, std::vector<Cutting::Polygon>& polygons) {
        Cutting::Polygon numbers;
        for (const int n : polygon) {
            m_isTaken[n] = true;
            numbers.push_back(m_part.nodeNumber[n]);
        }
        // From the smallest corner towards its smaller neighbour: the same on whichever rank.
        std::rotate(numbers.begin(), std::min_element(numbers.begin(), numbers.end()),
                    numbers.end());
        if (numbers.back() < numbers[1]) std::reverse(numbers.begin() + 1, numbers.end());
        polygons.push_back(std::move(numbers));
    }

    const RankPart& m_part;
    const FvMesh& m_mesh;
    const WeldLines& m_lines;
    const std::vector<double>& m_angles;
    const std::vector<Vec3>& m_directions;
    std::vector<Vec3> m_acrossDirections;
    std::vector<bool> m_isTaken;
    Cutting m_cutting;
};

void put(Packer& packer, const std::vector<Cutting::Polygon>& polygons) {
    packer.put(polygons.size());
    for (const Cutting::Polygon& polygon : polygons) packer.put(polygon);
}

void get(Unpacker& unpacker, std::vector<Cutting::Polygon>& polygons) {
    for (auto count = unpacker.get<std::size_t>(); count > 0; --count)
        unpacker.get(polygons.emplace_back());
}

// Adds what another rank has.
void unpack(const Bytes& message, Cutting& whole) {
    Unpacker unpacker(message);
    if (unpacker.atEnd()) return;
    Cutting more;
    unpacker.get(more.nodes);
    unpacker.get(more.links);
    whole.nodes.insert(whole.nodes.end(), more.nodes.begin(), more.nodes.end());
    whole.links.insert(whole.links.end(), more.links.begin(), more.links.end());
    get(unpacker, whole.skin);
    get(unpacker, whole.surface);
}

// The numbers of the whole mesh become those of the points cut out.
class Numbering {
  public:
    explicit Numbering(const std::vector<std::int64_t>& numbers) : m_numbers(numbers) {}
    int operator()(std::int64_t number) const {
        return static_cast<int>(std::lower_bound(m_numbers.begin(), m_numbers.end(), number) -
                                m_numbers.begin());
    }

  private:
    const std::vector<std::int64_t>& m_numbers;
};

Rows polygonsOf(std::vector<Cutting::Polygon> polygons, const Numbering& pointOf) {
    std::sort(polygons.begin(), polygons.end());
    Rows rows;
    std::vector<int> corners;
    for (const Cutting::Polygon& polygon : polygons) {
        corners.clear();
        for (const std::int64_t number : polygon) corners.push_back(pointOf(number));
        rows.append(corners);
    }
    return rows;
}

LineMesh join(Cutting cutting) {
    // Where ranks share a node, a weld node comes first: one rank may know it as a corner only.
    std::sort(cutting.nodes.begin(), cutting.nodes.end(), [](const auto& a, const auto& b) {
        return a.number != b.number ? a.number < b.number : a.line > b.line;
    });
    const auto isSame = [](const auto& a, const auto& b) { return a.number == b.number; };
    cutting.nodes.erase(std::unique(cutting.nodes.begin(), cutting.nodes.end(), isSame),
                        cutting.nodes.end());
    LineMesh mesh;
    for (const Cutting::Node& node : cutting.nodes) {
        mesh.number.push_back(node.number);
        mesh.points.push_back(node.place);
        mesh.line.push_back(node.line);
        mesh.angle.push_back(node.angle);
        mesh.time.push_back(node.time);
    }
    const Numbering pointOf(mesh.number);
    std::sort(cutting.links.begin(), cutting.links.end());
    cutting.links.erase(std::unique(cutting.links.begin(), cutting.links.end()),
                        cutting.links.end());
    for (const Cutting::Link& link : cutting.links)
        mesh.links.push_back({pointOf(link[0]), pointOf(link[1])});
    mesh.skin = polygonsOf(std::move(cutting.skin), pointOf);
    mesh.surface = polygonsOf(std::move(cutting.surface), pointOf);
    return mesh;
}

}  // namespace

LineMesh cutOutLines(const RankPart& part, const FvMesh& mesh, const WeldLines& lines,
                     const std::vector<double>& angles, const std::vector<Vec3>& directions) {
    Cutting own = Cutter(part, mesh, lines, angles, directions).cut();
    if (part.ranks.size() == 1) return join(std::move(own));
    Packer packer;
    packer.put(own.nodes).put(own.links);
    put(packer, own.skin);
    put(packer, own.surface);
    own = {};
    Cutting whole;
    for (const Bytes& message : gatherToFirst(part.ranks, packer.take())) unpack(message, whole);
    return join(std::move(whole));
}

}  // namespace weldline
