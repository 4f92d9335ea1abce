// How much smoothing an exact and a disturbed field need, and which settings are equal.

#include <iostream>
#include <limits>

#include "CaseMesh.h"
#include "Measure.h"
#include "Picture.h"
#include "Study.h"

namespace weldline::accuracy {

namespace {

constexpr double kNoise = 0.4;
constexpr CellShape kShapes[] = {CellShape::Hexahedra, CellShape::Tetrahedra};

struct Column {
    double error = 0.0, found = 0.0, falseNodes = 0.0;
    int cases = 0, casesWithAngle = 0;

    void add(const Accuracy& a) {
        ++cases;
        found += a.found;
        if (a.weldNodes > 0) falseNodes += a.falseNodes;
        if (!(a.angleError >= 0.0)) return;
        ++casesWithAngle;
        error += a.angleError;
    }
    void append(std::vector<std::string>& row) const {
        const double none = std::numeric_limits<double>::quiet_NaN();
        row.push_back(fixed(casesWithAngle == 0 ? none : error / casesWithAngle, 0));
        row.push_back(percent(found / cases));
        row.push_back(percent(falseNodes / cases));
    }
};

Map mapOf(const std::string& title, const FvMesh& mesh, const std::vector<double>& angles) {
    Map map{title, {}};
    for (std::size_t n = 0; n < angles.size(); ++n)
        if (angles[n] < 180.0)
            map.nodes.push_back({{mesh.points[n].x, mesh.points[n].y}, angles[n]});
    return map;
}

// The disturbed field on tetrahedra with little, some and much smoothing.
bool isDrawn(const Scheme& scheme) {
    return scheme.name == "1, 2 before, 0 after" || scheme.name == "1, 2 before, 4 after" ||
           scheme.name == "1, 2 before, 20 after" || scheme.name == "4, 2 before, 20 after";
}

}  // namespace

void studySmoothing(const Runner& runner, Document& document, const std::string& pictures) {
    const std::vector<Scheme> schemes = smoothingVariants();
    std::vector<std::vector<Column>> columns(schemes.size(), std::vector<Column>(4));
    for (const FrontCase& front : allCases()) {
        std::vector<Map> maps;
        for (std::size_t shape = 0; shape < 2; ++shape) {
            std::cerr << "smoothing, " << front.name << ", " << nameOf(kShapes[shape]) << "\n";
            const CaseMesh mesh = meshOf(front, kShapes[shape], kMiddleSize);
            const TrueLine line(front, mesh.mesh, kMiddleSize);
            for (std::size_t noise = 0; noise < 2; ++noise) {
                const std::vector<float> times =
                    arrivalTimes(front, mesh, noise == 1 ? kNoise : 0.0);
                for (std::size_t s = 0; s < schemes.size(); ++s) {
                    const Run run = runner.run(mesh.mesh, mesh.groups, times, schemes[s]);
                    columns[s][2 * shape + noise].add(line.measure(run.angles));
                    if (shape == 1 && noise == 1 && isDrawn(schemes[s]))
                        maps.push_back(mapOf("scheme " + schemes[s].name, mesh.mesh, run.angles));
                }
            }
        }
        if (!pictures.empty())
            savePicture(pictures + "/map-" + front.name + ".svg", mapPicture(front, maps));
    }
    std::vector<std::string> head{"scheme"};
    for (const CellShape shape : kShapes)
        for (const char* field : {"exact", "disturbed"})
            for (const char* quantity : {"error", "found", "false"})
                head.push_back(std::string(quantity) + " (" + nameOf(shape).substr(0, 3) + ", " +
                               field + ")");
    Table table(head);
    for (std::size_t s = 0; s < schemes.size(); ++s) {
        std::vector<std::string> row{schemes[s].name};
        for (const Column& column : columns[s]) column.append(row);
        table.add(row);
    }
    document.put("smoothing", table.markdown());
}

void studySwitch(const Runner& runner, Document& document) {
    const std::vector<Scheme> schemes = allSchemes();
    std::vector<std::vector<double>> angles(schemes.size());
    for (const FrontCase& front : allCases())
        for (const CellShape shape : kCellShapes) {
            const CaseMesh mesh = meshOf(front, shape, kSizes[0]);
            const std::vector<float> times = arrivalTimes(front, mesh, kNoise);
            for (std::size_t s = 0; s < schemes.size(); ++s) {
                const Run run = runner.run(mesh.mesh, mesh.groups, times, schemes[s]);
                angles[s].insert(angles[s].end(), run.angles.begin(), run.angles.end());
            }
        }
    Table table({"scheme", "gradient compared", "nodes with the same angle as 4, 4"});
    const std::vector<double>& last = angles.back();
    for (std::size_t s = 0; s < schemes.size(); ++s) {
        std::size_t same = 0;
        for (std::size_t n = 0; n < last.size(); ++n) same += angles[s][n] == last[n] ? 1 : 0;
        table.add({schemes[s].name, schemes[s].gradient,
                   same == last.size() ? "all" : std::to_string(last.size() - same) + " differ"});
    }
    document.put("same", table.markdown());
}

}  // namespace weldline::accuracy
