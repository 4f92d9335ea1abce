#include "CgnsSurfaces.h"

#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <iterator>
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
            if (surface->grid()->GetNumberOfCells() > 0) {
                checkGrid(file, surface->grid());
                opened.surfaces.push_back({surface->name(), surface->grid()});
            }
        }
    }

  private:
    std::vector<std::unique_ptr<NamedSurface>> surfaces_;
};

// The surface elements of a zone, of which each goes to one patch.
class ZoneElements {
  public:
    explicit ZoneElements(const CgnsZone& zone) : zone_(zone) {
        for (const CgnsSection& section : zone.sections) {
            isTaken_.emplace_back(static_cast<std::size_t>(section.corners.count()), false);
        }
    }

    // Hands what the condition has, and no other one before, to `add`. Whether there is any.
    template <class Add>
    bool take(const CgnsCondition& condition, Add add) {
        return condition.isOnPoints ? takeOnPoints(condition, add) : takeInRanges(condition, add);
    }

    // Faces of polyhedra are left out: most of them lie inside.
    template <class Add>
    void takeRest(Add add) {
        for (std::size_t s = 0; s < isTaken_.size(); ++s) {
            for (std::size_t e = 0; e < isTaken_[s].size() && !zone_.sections[s].isFaceList; ++e) {
                takeElement(s, e, [&](auto corners) { add(zone_.sections[s].name, corners); });
            }
        }
    }

  private:
    template <class Add>
    bool takeElement(std::size_t section, std::size_t element, Add add) {
        const auto corners = zone_.sections[section].corners[static_cast<int>(element)];
        if (isTaken_[section][element] || corners.empty()) {
            return false;
        }
        isTaken_[section][element] = true;
        add(corners);
        return true;
    }

    template <class Add>
    bool takeInRanges(const CgnsCondition& condition, Add add) {
        bool hasAny = false;
        for (const auto& [first, last] : condition.members) {
            for (std::size_t s = 0; s < isTaken_.size(); ++s) {
                const std::int64_t begin = zone_.sections[s].first;
                const std::int64_t end = begin + std::ssize(isTaken_[s]);
                for (std::int64_t e = std::max(first, begin); e < end && e <= last; ++e) {
                    hasAny |= takeElement(s, static_cast<std::size_t>(e - begin), add);
                }
            }
        }
        return hasAny;
    }

    // On purpose not among the faces of polyhedra: one inside may have all its corners on the
    // boundary.
    template <class Add>
    bool takeOnPoints(const CgnsCondition& condition, Add add) {
        const std::vector<bool> isMember = pointsOf(condition);
        bool hasAny = false;
        for (std::size_t s = 0; s < isTaken_.size(); ++s) {
            const CgnsSection& section = zone_.sections[s];
            for (std::size_t e = 0; e < isTaken_[s].size() && !section.isFaceList; ++e) {
                const auto corners = section.corners[static_cast<int>(e)];
                if (std::all_of(corners.begin(), corners.end(), [&](int corner) {
                        return isMember[static_cast<std::size_t>(corner)];
                    })) {
                    hasAny |= takeElement(s, e, add);
                }
            }
        }
        return hasAny;
    }

    std::vector<bool> pointsOf(const CgnsCondition& condition) const {
        std::vector<bool> isMember(zone_.points.size(), false);
        for (const auto& [first, last] : condition.members) {
            const std::int64_t end = std::min(last, std::ssize(isMember));
            for (std::int64_t p = std::max<std::int64_t>(first, 1); p <= end; ++p) {
                isMember[static_cast<std::size_t>(p - 1)] = true;
            }
        }
        return isMember;
    }

    const CgnsZone& zone_;
    std::vector<std::vector<bool>> isTaken_;  // per section and element
};

// Points that a condition names; a range may claim any number.
double sizeOf(const CgnsCondition& condition) {
    double size = 0.0;
    for (const auto& [first, last] : condition.members) {
        size += static_cast<double>(last) - static_cast<double>(first) + 1.0;
    }
    return size;
}

// In the order in which conditions take their elements: those on elements as they come, then those
// on points from few to many, so that a gate keeps its elements where the walls have its rim.
std::vector<const CgnsCondition*> inOrder(const CgnsZone& zone) {
    std::vector<const CgnsCondition*> order;
    for (const CgnsCondition& condition : zone.conditions) {
        order.push_back(&condition);
    }
    std::stable_sort(order.begin(), order.end(), [](const auto* a, const auto* b) {
        const auto rank = [](const CgnsCondition* c) { return c->isOnPoints ? sizeOf(*c) : -1.0; };
        return rank(a) < rank(b);
    });
    return order;
}

void addZone(const CgnsZone& zone, NamedSurfaces& surfaces, std::vector<std::string>& remarks) {
    surfaces.startZone();
    ZoneElements elements(zone);
    for (const CgnsCondition* condition : inOrder(zone)) {
        NamedSurface& surface = surfaces[condition->name];
        if (!elements.take(*condition, [&](auto corners) { surface.add(zone, corners); })) {
            remarks.push_back("The boundary condition '" + condition->name +
                              "' is left out: no surface element is left for it.");
        }
    }
    elements.takeRest(
        [&](const std::string& section, auto corners) { surfaces[section].add(zone, corners); });
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
