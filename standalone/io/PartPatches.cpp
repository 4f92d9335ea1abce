#include "PartPatches.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "comm/Messages.h"
#include "comm/Packing.h"

namespace weldline {
namespace {

// A surface block of this rank; its corners by the numbers of the whole mesh.
struct Surface {
    bool isLeftOut = false;  // no part of the mesh's surface
    Rows faces;              // points of the block
    std::vector<std::int64_t> numbers;
};

// One question for the points of all blocks.
std::vector<Surface> readSurfaces(const PointDirectory& directory,
                                  const std::vector<Block>& blocks) {
    std::vector<Vec3> places;
    for (const Block& block : blocks) {
        appendPoints(block.grid, places);
    }
    const std::vector<std::int64_t> numbers = directory.find(places);
    std::vector<Surface> surfaces;
    auto at = numbers.begin();
    for (const Block& block : blocks) {
        Surface& surface = surfaces.emplace_back();
        surface.numbers.assign(at, at + block.grid->GetNumberOfPoints());
        at += block.grid->GetNumberOfPoints();
        std::vector<int> map(surface.numbers.size());
        std::iota(map.begin(), map.end(), 0);
        for (std::size_t p = 0; p < map.size(); ++p) {
            map[p] = surface.numbers[p] < 0 ? -1 : map[p];
        }
        surface.faces = surfaceFaces(block.grid, map);
        surface.isLeftOut = surface.faces.count() == 0 && block.grid->GetNumberOfCells() > 0;
    }
    return surfaces;
}

// What all ranks know of patches before any face is looked at.
struct PatchPlan {
    struct SurfaceName {
        std::string name;
        bool isLeftOut = false;
        int patch = -1;
    };
    std::vector<long long> numbers;  // of patches by number, ascending
    std::vector<std::string> names;  // of these patches
    std::vector<SurfaceName> surfaces;
    std::size_t firstSurface = 0;  // of this rank
    std::vector<std::string> remarks;
    LeftOut leftOut;
};

Bytes packOwn(const PatchSources& sources, const std::vector<Surface>& surfaces) {
    std::vector<long long> numbers;
    std::vector<std::string> names;
    for (const auto& [number, faces] : sources.numbered) {
        numbers.push_back(number);
        names.push_back(sources.names.at(number));
    }
    Packer packer;
    packer.put(numbers).put(names).put(sources.remarks).put(sources.leftOut).put(surfaces.size());
    for (std::size_t s = 0; s < surfaces.size(); ++s) {
        packer.put(sources.surfaces[s].name).put(surfaces[s].isLeftOut);
    }
    return packer.take();
}

void addRank(const Bytes& message, std::map<long long, std::string>& numbers, PatchPlan& plan) {
    Unpacker unpacker(message);
    const auto ownNumbers = unpacker.get<std::vector<long long>>();
    const auto ownNames = unpacker.get<std::vector<std::string>>();
    for (std::size_t i = 0; i < ownNumbers.size(); ++i) {
        numbers.emplace(ownNumbers[i], ownNames[i]);
    }
    const auto remarks = unpacker.get<std::vector<std::string>>();
    plan.remarks.insert(plan.remarks.end(), remarks.begin(), remarks.end());
    const auto leftOut = unpacker.get<LeftOut>();
    plan.leftOut.ghosts += leftOut.ghosts;
    plan.leftOut.unassignedSurfaces += leftOut.unassignedSurfaces;
    plan.leftOut.lowerCells += leftOut.lowerCells;
    for (auto left = unpacker.get<std::size_t>(); left > 0; --left) {
        PatchPlan::SurfaceName& surface = plan.surfaces.emplace_back();
        unpacker.get(surface.name);
        unpacker.get(surface.isLeftOut);
    }
}

PatchPlan makePlan(Ranks& ranks, const PatchSources& sources,
                   const std::vector<Surface>& surfaces) {
    const std::vector<Bytes> all = gatherToAll(ranks, packOwn(sources, surfaces));
    PatchPlan plan;
    std::map<long long, std::string> numbers;
    for (std::size_t r = 0; r < all.size(); ++r) {
        if (static_cast<int>(r) == ranks.rank()) {
            plan.firstSurface = plan.surfaces.size();
        }
        addRank(all[r], numbers, plan);
    }
    for (const auto& [number, name] : numbers) {
        plan.numbers.push_back(number);
        plan.names.push_back(name);
    }
    return plan;
}

void namePatches(PatchPlan& plan, bool isCase, std::vector<Patch>& patches) {
    for (const std::string& name : plan.names) {
        patches.push_back({name, {}});
    }
    const auto firstNamed = patches.size();
    for (PatchPlan::SurfaceName& surface : plan.surfaces) {
        if (surface.isLeftOut) {
            continue;
        }
        const auto known =
            isCase ? std::find_if(patches.begin() + static_cast<std::ptrdiff_t>(firstNamed),
                                  patches.end(),
                                  [&](const Patch& patch) { return patch.name == surface.name; })
                   : patches.end();
        surface.patch = static_cast<int>(known - patches.begin());
        if (known == patches.end()) {
            patches.push_back({surface.name, {}});
        }
    }
}

void addRemarks(const PatchPlan& plan, std::vector<std::string>& remarks) {
    remarks = remarksOn(plan.leftOut);
    for (const PatchPlan::SurfaceName& surface : plan.surfaces) {
        if (surface.isLeftOut) {
            remarks.push_back("The block '" + surface.name +
                              "' is left out: it is no part of the mesh's surface.");
        }
    }
    remarks.insert(remarks.end(), plan.remarks.begin(), plan.remarks.end());
}

void appendFaces(int patch, const Rows& rows, const std::vector<std::int64_t>& numbers,
                 PatchFaces& faces) {
    std::vector<std::int64_t> corners;
    for (int f = 0; f < rows.count(); ++f) {
        corners.clear();
        for (const int point : rows[f]) {
            corners.push_back(numbers[static_cast<std::size_t>(point)]);
        }
        faces.append(patch, f, corners);
    }
}

}  // namespace

void appendPoints(vtkDataSet* grid, std::vector<Vec3>& points) {
    points.reserve(points.size() + static_cast<std::size_t>(grid->GetNumberOfPoints()));
    for (vtkIdType p = 0; p < grid->GetNumberOfPoints(); ++p) {
        std::array<double, 3> x{};
        grid->GetPoint(p, x.data());
        points.push_back({x[0], x[1], x[2]});
    }
}

PatchFaces collectPatches(Ranks& ranks, const PointDirectory& directory,
                          const PatchSources& sources, DataPart& data) {
    const std::vector<Surface> surfaces = readSurfaces(directory, sources.surfaces);
    PatchPlan plan = makePlan(ranks, sources, surfaces);
    namePatches(plan, sources.isCase, data.part.patches);
    addRemarks(plan, data.remarks);

    PatchFaces faces;
    for (const auto& [number, rows] : sources.numbered) {
        const auto patch = std::lower_bound(plan.numbers.begin(), plan.numbers.end(), number);
        appendFaces(static_cast<int>(patch - plan.numbers.begin()), rows, directory.numbers(),
                    faces);
    }
    for (std::size_t s = 0; s < surfaces.size(); ++s) {
        const int patch = plan.surfaces[plan.firstSurface + s].patch;
        if (patch >= 0) {
            appendFaces(patch, surfaces[s].faces, surfaces[s].numbers, faces);
        }
    }
    return faces;
}

}  // namespace weldline
