#include "DataSet.h"

#include <array>
#include <limits>
#include <numeric>

#include "FieldArray.h"
#include "GridCells.h"
#include "GridCheck.h"
#include "OpenDataSet.h"
#include "PointJoin.h"
#include "VtkMessages.h"

namespace weldline {
namespace {

void appendPoints(vtkDataSet* grid, std::vector<Vec3>& points) {
    points.reserve(points.size() + static_cast<std::size_t>(grid->GetNumberOfPoints()));
    for (vtkIdType p = 0; p < grid->GetNumberOfPoints(); ++p) {
        std::array<double, 3> x{};
        grid->GetPoint(p, x.data());
        points.push_back({x[0], x[1], x[2]});
    }
}

void checkBlocks(const std::string& file, const OpenedDataSet& opened) {
    long long volumeCells = 0;
    long long cells = 0;
    long long points = 0;
    for (const Block& block : opened.volumes) {
        volumeCells += countVolumeCells(block.grid);
        cells += block.grid->GetNumberOfCells();
        points += block.grid->GetNumberOfPoints();
    }
    for (const Block& block : opened.surfaces) {
        cells += block.grid->GetNumberOfCells();
    }
    if (volumeCells == 0) {
        failOnInput(file, cells > 0 ? "the data set holds only surfaces or lines; a mesh of volume "
                                      "cells is needed"
                                    : "the data set holds no cells; a mesh of volume cells is "
                                      "needed");
    }
    if (cells > std::numeric_limits<int>::max() || points > std::numeric_limits<int>::max()) {
        failOnInput(file, "the mesh is larger than 32-bit cell and point numbers allow");
    }
}

// Per block the numbers of its points in the mesh.
std::vector<std::vector<int>> collectPoints(const std::vector<Block>& blocks,
                                            std::vector<Vec3>& points) {
    std::vector<int> starts{0};
    for (const Block& block : blocks) {
        appendPoints(block.grid, points);
        starts.push_back(static_cast<int>(points.size()));
    }
    std::vector<int> joined(points.size());
    if (blocks.size() > 1) {
        joined = joinPieces(points, starts);
    } else {
        std::iota(joined.begin(), joined.end(), 0);
    }
    std::vector<std::vector<int>> maps;
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        maps.emplace_back(joined.begin() + starts[b], joined.begin() + starts[b + 1]);
    }
    return maps;
}

void addSurfacePatches(const std::vector<Block>& surfaces, DataSet& data) {
    if (surfaces.empty()) {
        return;
    }
    const PointIndex index(data.mesh.points);
    for (const Block& block : surfaces) {
        std::vector<Vec3> points;
        appendPoints(block.grid, points);
        std::vector<int> map;
        map.reserve(points.size());
        for (const Vec3 point : points) {
            map.push_back(index.find(point));
        }
        Rows faces = surfaceFaces(block.grid, map);
        if (faces.count() == 0 && block.grid->GetNumberOfCells() > 0) {
            data.remarks.push_back("The block '" + block.name +
                                   "' is left out: it is no part of the mesh's surface.");
        } else {
            data.patches.push_back({block.name, std::move(faces)});
        }
    }
}

// Numbers are kept only where cells were left out.
void dropPlainNumbers(std::vector<std::int64_t>& fileNumbers) {
    const auto cells = static_cast<std::int64_t>(fileNumbers.size());
    if (cells > 0 && fileNumbers.back() == cells - 1) {
        fileNumbers = {};
    }
}

}  // namespace

DataSet readDataSet(const std::string& file, const ReadOptions& options) {
    const VtkMessages silence;  // also of what VTK would say while memory ends
    const OpenedDataSet opened = openDataSet(file, options.time);
    checkBlocks(file, opened);

    DataSet data;
    data.file = file;
    data.time = opened.time;
    std::vector<vtkDataSet*> grids;
    for (const Block& block : opened.volumes) {
        grids.push_back(block.grid);
    }
    data.fieldName = findField(file, grids, options);

    const auto pointMaps = collectPoints(opened.volumes, data.mesh.points);
    CellCollector collector(file, data.mesh);
    for (std::size_t b = 0; b < grids.size(); ++b) {
        const std::vector<long long> taken = collector.append(grids[b], pointMaps[b]);
        appendField(grids[b], data.fieldName, taken, data.fillTime);
    }
    dropPlainNumbers(data.mesh.fileNumbers);
    data.patches = collector.numberedPatches();
    data.remarks = collector.remarks();
    addSurfacePatches(opened.surfaces, data);
    for (const std::string& name : opened.otherBlocks) {
        data.remarks.push_back("The block '" + name + "' is left out: it is no unstructured grid.");
    }
    return data;
}

}  // namespace weldline
