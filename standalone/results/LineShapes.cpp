#include "LineShapes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "LevelSkeleton.h"
#include "SkinProjection.h"

namespace weldline {

namespace {

// Some points of a line mesh under numbers of their own.
struct Band {
    std::vector<int> points;  // of the line mesh
    PointGraph graph;
};

using Link = std::array<int, 2>;

// The connected bands that points and links form, by their first point.
std::vector<Band> bandsOf(const LineMesh& mesh, const std::vector<int>& points,
                          const std::vector<Link>& links) {
    std::map<int, std::vector<int>> neighbours;
    for (const int p : points) neighbours[p];
    for (const auto& [a, b] : links) {
        neighbours[a].push_back(b);
        neighbours[b].push_back(a);
    }
    std::vector<Band> bands;
    std::map<int, int> numberOf;
    for (const auto& [start, none] : neighbours) {
        if (numberOf.contains(start)) continue;
        Band band;
        band.points.push_back(start);
        numberOf[start] = 0;
        for (std::size_t i = 0; i < band.points.size(); ++i)
            for (const int other : neighbours[band.points[i]])
                if (numberOf.try_emplace(other, static_cast<int>(band.points.size())).second)
                    band.points.push_back(other);
        std::vector<int> row;
        for (const int p : band.points) {
            row.clear();
            for (const int other : neighbours[p]) row.push_back(numberOf[other]);
            band.graph.places.push_back(mesh.points[p]);
            band.graph.links.append(row);
        }
        bands.push_back(std::move(band));
    }
    return bands;
}

void smooth(LineCurve& curve) {
    const std::size_t count = curve.points.size();
    if (count < 3) return;
    for (int pass = 0; pass < 2; ++pass) {
        const std::vector<Vec3> old = curve.points;
        for (std::size_t i = 0; i < count; ++i) {
            if (!curve.isClosed && (i == 0 || i == count - 1)) continue;
            const Vec3 before = old[(i + count - 1) % count];
            const Vec3 after = old[(i + 1) % count];
            curve.points[i] = 0.25 * (before + after) + 0.5 * old[i];
        }
    }
}

// Means over the nodes of each point. Times that are NaN count for nothing.
void carryValues(const LineMesh& mesh, const std::vector<std::vector<int>>& nodes,
                 LineCurve& curve) {
    for (const std::vector<int>& set : nodes) {
        double angle = 0.0;
        double time = 0.0;
        int timed = 0;
        for (const int p : set) {
            angle += mesh.angle[p];
            if (std::isnan(mesh.time[p])) continue;
            time += mesh.time[p];
            ++timed;
        }
        curve.angle.push_back(angle / static_cast<double>(set.size()));
        curve.time.push_back(timed > 0 ? time / timed : std::numeric_limits<double>::quiet_NaN());
    }
}

std::vector<LineCurve> curvesOf(const LineMesh& mesh, const Band& band,
                                const SkinProjection* skin) {
    std::vector<LineCurve> curves;
    for (SkeletonCurve& skeleton : skeletonOf(band.graph)) {
        for (std::vector<int>& nodes : skeleton.nodes)
            for (int& node : nodes) node = band.points[node];
        LineCurve curve;
        curve.points = std::move(skeleton.points);
        curve.isClosed = skeleton.isClosed;
        carryValues(mesh, skeleton.nodes, curve);
        smooth(curve);
        for (std::size_t i = 0; skin != nullptr && i < curve.points.size(); ++i)
            curve.points[i] = skin->onSkin(curve.points[i], skeleton.nodes[i]);
        curves.push_back(std::move(curve));
    }
    return curves;
}

// Links between points of the same line that share a skin polygon, by line.
std::map<int, std::set<Link>> skinLinks(const LineMesh& mesh) {
    std::map<int, std::set<Link>> links;
    for (int s = 0; s < mesh.skin.count(); ++s) {
        const auto corners = mesh.skin[s];
        for (std::size_t a = 0; a < corners.size(); ++a) {
            const int line = mesh.line[corners[a]];
            if (line == 0) continue;
            links[line];
            for (std::size_t b = a + 1; b < corners.size(); ++b)
                if (mesh.line[corners[b]] == line)
                    links[line].insert(
                        {std::min(corners[a], corners[b]), std::max(corners[a], corners[b])});
        }
    }
    return links;
}

std::map<int, std::set<int>> skinPoints(const LineMesh& mesh) {
    std::map<int, std::set<int>> points;
    for (const int corner : mesh.skin.entries)
        if (mesh.line[corner] > 0) points[mesh.line[corner]].insert(corner);
    return points;
}

double sumOfLengths(const std::vector<LineCurve>& curves) {
    double sum = 0.0;
    for (const LineCurve& curve : curves) sum += curve.length();
    return sum;
}

void addPath(const LineMesh& mesh, const std::vector<int>& points, const std::vector<Link>& links,
             LineShape& shape) {
    for (const Band& band : bandsOf(mesh, points, links)) {
        std::vector<LineCurve> curves = curvesOf(mesh, band, nullptr);
        shape.path.insert(shape.path.end(), curves.begin(), curves.end());
    }
    std::stable_sort(
        shape.path.begin(), shape.path.end(),
        [](const LineCurve& a, const LineCurve& b) { return a.length() > b.length(); });
    shape.length = shape.path.front().length();
    shape.branchLength = sumOfLengths(shape.path) - shape.length;
}

}  // namespace

double LineCurve::length() const {
    double sum = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) sum += norm(points[i] - points[i - 1]);
    return isClosed ? sum + norm(points.front() - points.back()) : sum;
}

std::vector<LineShape> shapesOf(const LineMesh& mesh) {
    std::map<int, std::vector<int>> points;
    std::map<int, std::vector<Link>> links;
    for (int p = 0; p < static_cast<int>(mesh.points.size()); ++p)
        if (mesh.line[p] > 0) points[mesh.line[p]].push_back(p);
    for (const Link& link : mesh.links) links[mesh.line[link[0]]].push_back(link);

    const SkinProjection projection(mesh);
    const std::map<int, std::set<Link>> onSkin = skinLinks(mesh);
    const std::map<int, std::set<int>> skin = skinPoints(mesh);
    std::vector<LineShape> shapes;
    for (const auto& [line, ofLine] : points) {
        LineShape shape;
        shape.id = line;
        addPath(mesh, ofLine, links[line], shape);
        if (const auto found = skin.find(line); found != skin.end()) {
            const auto& its = onSkin.at(line);
            for (const Band& band : bandsOf(mesh, {found->second.begin(), found->second.end()},
                                            {its.begin(), its.end()})) {
                std::vector<LineCurve> curves = curvesOf(mesh, band, &projection);
                shape.skin.insert(shape.skin.end(), curves.begin(), curves.end());
            }
        }
        shape.skinLength = sumOfLengths(shape.skin);
        shapes.push_back(std::move(shape));
    }
    return shapes;
}

}  // namespace weldline
