#include "CgnsSurfaces.h"

#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <memory>
#include <unordered_map>

#include "CgnsFile.h"
#include "GridCheck.h"

namespace weldline {
namespace {

// Surface elements of one name, of any number of zones.
class NamedSurface {
  public:
    explicit NamedSurface(const std::string& name) : name_(name) {
        points_->SetDataTypeToDouble();
        grid_->SetPoints(points_);
        grid_->AllocateEstimate(1, 4);
    }

    const std::string& name() const { return name_; }
    vtkPolyData* grid() const { return grid_; }

    // Points of another zone are other points, also in the same place.
    void startZone() { placeOf_.clear(); }

    void add(const CgnsZone& zone, std::span<const int> corners) {
        std::vector<vtkIdType> nodes;
        for (const int corner : corners) {
            const auto [place, isNew] = placeOf_.emplace(corner, points_->GetNumberOfPoints());
            if (isNew) {
                const Vec3 x = zone.points[static_cast<std::size_t>(corner)];
                points_->InsertNextPoint(x.x, x.y, x.z);
            }
            nodes.push_back(place->second);
        }
        grid_->InsertNextCell(VTK_POLYGON, static_cast<int>(nodes.size()), nodes.data());
    }

  private:
    std::string name_;
    vtkNew<vtkPoints> points_;
    vtkNew<vtkPolyData> grid_;
    std::unordered_map<int, vtkIdType> placeOf_;
};

// In the order in which names come up.
class NamedSurfaces {
  public:
    NamedSurface& operator[](const std::string& name) {
        const auto known =
            std::find_if(surfaces_.begin(), surfaces_.end(),
                         [&](const auto& surface) { return surface->name() == name; });
        return known != surfaces_.end()
                   ? **known
                   : *surfaces_.emplace_back(std::make_unique<NamedSurface>(name));
    }

    void startZone() {
        for (const auto& surface : surfaces_) {
            surface->startZone();
        }
    }

    void handOver(const std::string& file, OpenedDataSet& opened) {
        for (const auto& surface : surfaces_) {
            checkGrid(file, surface->grid());
            opened.surfaces.push_back({surface->name(), surface->grid()});
        }
    }

  private:
    std::vector<std::unique_ptr<NamedSurface>> surfaces_;
};

// Per section and element whether it is chosen.
using Choice = std::vector<std::vector<bool>>;

Choice noElements(const CgnsZone& zone) {
    Choice choice;
    for (const CgnsSection& section : zone.sections) {
        choice.emplace_back(static_cast<std::size_t>(section.corners.count()), false);
    }
    return choice;
}

Choice elementsInRanges(const CgnsZone& zone, const CgnsCondition& condition) {
    Choice choice = noElements(zone);
    for (std::size_t s = 0; s < choice.size(); ++s) {
        const std::int64_t before = zone.sections[s].first;
        const auto count = static_cast<std::int64_t>(choice[s].size());
        for (const auto& [first, last] : condition.members) {
            const std::int64_t end = std::min(last + 1 - before, count);
            for (std::int64_t e = std::max<std::int64_t>(first - before, 0); e < end; ++e) {
                choice[s][static_cast<std::size_t>(e)] = true;
            }
        }
    }
    return choice;
}

// Faces of polyhedra are left out: one inside may have all its corners on a boundary, too.
Choice elementsOnPoints(const CgnsZone& zone, const CgnsCondition& condition) {
    std::vector<bool> isMember(zone.points.size(), false);
    for (const auto& [first, last] : condition.members) {
        const auto end = std::min(last, static_cast<std::int64_t>(isMember.size()));
        for (std::int64_t p = std::max<std::int64_t>(first, 1); p <= end; ++p) {
            isMember[static_cast<std::size_t>(p - 1)] = true;
        }
    }
    Choice choice = noElements(zone);
    for (std::size_t s = 0; s < choice.size(); ++s) {
        const CgnsSection& section = zone.sections[s];
        for (int e = 0; e < section.corners.count() && !section.isFaceList; ++e) {
            const std::span<const int> corners = section.corners[e];
            choice[s][static_cast<std::size_t>(e)] =
                std::all_of(corners.begin(), corners.end(),
                            [&](int corner) { return isMember[static_cast<std::size_t>(corner)]; });
        }
    }
    return choice;
}

// Hands the chosen elements that are surfaces to `add` and strikes them off those left over.
template <class Add>
void takeChosen(const CgnsZone& zone, const Choice& choice, Choice& left, Add add) {
    for (std::size_t s = 0; s < choice.size(); ++s) {
        for (std::size_t e = 0; e < choice[s].size(); ++e) {
            const std::span<const int> corners = zone.sections[s].corners[static_cast<int>(e)];
            if (choice[s][e] && !corners.empty()) {
                add(zone.sections[s], corners);
                left[s][e] = false;
            }
        }
    }
}

void addZone(const CgnsZone& zone, NamedSurfaces& surfaces, std::vector<std::string>& remarks) {
    surfaces.startZone();
    Choice left = noElements(zone);
    for (std::size_t s = 0; s < left.size(); ++s) {
        left[s].assign(left[s].size(), !zone.sections[s].isFaceList);
    }
    for (const CgnsCondition& condition : zone.conditions) {
        const Choice chosen = condition.isOnPoints ? elementsOnPoints(zone, condition)
                                                   : elementsInRanges(zone, condition);
        bool hasAny = false;
        takeChosen(zone, chosen, left, [&](const CgnsSection&, std::span<const int> corners) {
            surfaces[condition.name].add(zone, corners);
            hasAny = true;
        });
        if (!hasAny) {
            remarks.push_back("The boundary condition '" + condition.name +
                              "' is left out: no surface element belongs to it.");
        }
    }
    const Choice noCondition = left;
    takeChosen(zone, noCondition, left,
               [&](const CgnsSection& section, std::span<const int> corners) {
                   surfaces[section.name].add(zone, corners);
               });
}

}  // namespace

void addCgnsSurfaces(const std::string& file, OpenedDataSet& opened) {
    const CgnsFile cgns(file);
    NamedSurfaces surfaces;
    for (const CgnsZone& zone : cgns.zones()) {
        addZone(zone, surfaces, opened.remarks);
    }
    surfaces.handOver(file, opened);
}

}  // namespace weldline
