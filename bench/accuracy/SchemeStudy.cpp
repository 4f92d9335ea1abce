// All schemes against exact weld lines.

#include <cmath>
#include <iostream>
#include <limits>
#include <map>

#include "CaseMesh.h"
#include "Measure.h"
#include "Picture.h"
#include "Study.h"

namespace weldline::accuracy {

namespace {

// Mean over the cases in which the quantity is defined.
class Mean {
  public:
    void add(double value) {
        if (std::isnan(value)) return;
        m_sum += value;
        ++m_count;
    }
    double value() const {
        return m_count == 0 ? std::numeric_limits<double>::quiet_NaN() : m_sum / m_count;
    }

  private:
    double m_sum = 0.0;
    int m_count = 0;
};

struct SchemeMeans {
    Mean error, bias, corrected, found, falseNodes, distance;
    std::map<CellShape, Mean> damping;
    double seconds = 0.0;
    double cells = 0.0;

    void add(CellShape shape, const Accuracy& a) {
        error.add(a.angleError);
        bias.add(a.angleBias);
        damping[shape].add(a.damping);
        corrected.add(a.correctedError);
        found.add(a.found);
        falseNodes.add(a.falseNodes);
        distance.add(a.distance);
    }
};

struct Result {
    Accuracy accuracy;
    std::vector<TrueLine::Sample> samples;
};

// Results of one case: [shape][size][scheme].
using CaseResults = std::map<CellShape, std::vector<std::vector<Result>>>;

CaseResults runCase(const FrontCase& front, const std::vector<Scheme>& schemes,
                    const Runner& runner, std::vector<SchemeMeans>& means) {
    CaseResults results;
    for (const CellShape shape : kCellShapes)
        for (const double h : kSizes) {
            std::cerr << front.name << ", " << nameOf(shape) << ", h = " << h << " mm\n";
            const CaseMesh mesh = meshOf(front, shape, h);
            const TrueLine line(front, mesh.mesh, h);
            const std::vector<float> times = arrivalTimes(front, mesh, 0.0);
            std::vector<Result>& row = results[shape].emplace_back();
            for (std::size_t s = 0; s < schemes.size(); ++s) {
                const Run run = runner.run(mesh.mesh, mesh.groups, times, schemes[s]);
                row.push_back({line.measure(run.angles), line.samples(run.angles)});
                if (h != kFinestSize) continue;
                means[s].add(shape, row.back().accuracy);
                means[s].seconds += run.seconds;
                means[s].cells += mesh.mesh.cellCount();
            }
        }
    return results;
}

std::string caseTable(const std::vector<Scheme>& schemes, const CaseResults& results) {
    std::vector<std::string> head{"cells", "scheme"};
    for (const double h : kSizes) {
        const std::string at = " (" + fixed(h, 1) + ")";
        for (const char* quantity : {"error", "found", "false", "distance"})
            head.push_back(quantity + at);
    }
    Table table(head);
    for (const auto& [shape, sizes] : results)
        for (std::size_t s = 0; s < schemes.size(); ++s) {
            std::vector<std::string> row{nameOf(shape), schemes[s].name};
            for (const std::vector<Result>& size : sizes) {
                const Accuracy& a = size[s].accuracy;
                row.push_back(fixed(a.angleError, 0));
                row.push_back(percent(a.found));
                row.push_back(percent(a.falseNodes));
                row.push_back(fixed(a.distance, 2));
            }
            table.add(row);
        }
    return table.markdown();
}

std::string casePicture(const std::vector<Scheme>& schemes, const CaseResults& results) {
    std::vector<Panel> panels;
    for (const CellShape shape : {CellShape::Hexahedra, CellShape::Tetrahedra}) {
        Panel panel{nameOf(shape) + ", h = " + fixed(kFinestSize, 1) + " mm", {}};
        for (std::size_t s = 0; s < schemes.size(); ++s)
            panel.curves.push_back({"scheme " + schemes[s].name + ": " + schemes[s].gradient,
                                    results.at(shape).back()[s].samples});
        panels.push_back(panel);
    }
    return anglePicture(panels);
}

std::string summaryTable(const std::vector<Scheme>& schemes,
                         const std::vector<SchemeMeans>& means) {
    Table table({"scheme", "gradient", "error", "bias", "found", "false", "distance"});
    for (std::size_t s = 0; s < schemes.size(); ++s) {
        const SchemeMeans& m = means[s];
        table.add({schemes[s].name, schemes[s].gradient, fixed(m.error.value(), 0),
                   fixed(m.bias.value(), 0), percent(m.found.value()),
                   percent(m.falseNodes.value()), fixed(m.distance.value(), 2)});
    }
    return table.markdown();
}

std::string dampingTable(const std::vector<Scheme>& schemes, std::vector<SchemeMeans>& means) {
    std::vector<std::string> head{"scheme"};
    for (const CellShape shape : kCellShapes) head.push_back(nameOf(shape));
    head.emplace_back("error");
    head.emplace_back("error, corrected");
    Table table(head);
    for (std::size_t s = 0; s < schemes.size(); ++s) {
        std::vector<std::string> row{schemes[s].name};
        for (const CellShape shape : kCellShapes)
            row.push_back(fixed(means[s].damping[shape].value(), 2));
        row.push_back(fixed(means[s].error.value(), 0));
        row.push_back(fixed(means[s].corrected.value(), 0));
        table.add(row);
    }
    return table.markdown();
}

std::string timeTable(const std::vector<Scheme>& schemes, const std::vector<SchemeMeans>& means) {
    Table table({"scheme", "seconds per 100,000 cells"});
    for (std::size_t s = 0; s < schemes.size(); ++s)
        table.add({schemes[s].name, fixed(means[s].seconds / means[s].cells * 1e5, 2)});
    return table.markdown();
}

}  // namespace

void studySchemes(const Runner& runner, Document& document, const std::string& pictures) {
    const std::vector<Scheme> schemes = comparedSchemes();
    std::vector<SchemeMeans> means(schemes.size());
    for (const FrontCase& front : allCases()) {
        const CaseResults results = runCase(front, schemes, runner, means);
        document.put(front.name, caseTable(schemes, results));
        if (!pictures.empty())
            savePicture(pictures + "/angle-" + front.name + ".svg", casePicture(schemes, results));
    }
    document.put("summary", summaryTable(schemes, means));
    document.put("damping", dampingTable(schemes, means));
    document.put("time", timeTable(schemes, means));
}

}  // namespace weldline::accuracy
