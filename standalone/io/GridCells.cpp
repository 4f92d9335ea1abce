#include "GridCells.h"

#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkCellTypes.h>
#include <vtkDataArray.h>
#include <vtkDataSetAttributes.h>
#include <vtkFieldData.h>
#include <vtkIdList.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkStringArray.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <array>

#include "GridCheck.h"
#include "OpenDataSet.h"

namespace weldline {
namespace {

// Cell arrays that number boundary patches on 2-D cells, in the order in which they are looked for.
constexpr std::array patchArrays{"PatchId",       "PatchIds",      "BoundaryId", "boundary_id",
                                 "CellEntityIds", "gmsh:physical", "medit:ref"};

vtkDataArray* findPatchArray(vtkDataSet* grid) {
    for (const char* name : patchArrays) {
        vtkDataArray* array = grid->GetCellData()->GetArray(name);
        if (array != nullptr && array->GetNumberOfComponents() == 1 &&
            array->GetDataType() != VTK_FLOAT && array->GetDataType() != VTK_DOUBLE) {
            return array;
        }
    }
    return nullptr;
}

bool isGhost(vtkUnsignedCharArray* ghosts, vtkIdType cell) {
    constexpr int notOwned = vtkDataSetAttributes::DUPLICATECELL | vtkDataSetAttributes::HIDDENCELL;
    return ghosts != nullptr && (ghosts->GetValue(cell) & notOwned) != 0;
}

void collectNodes(vtkDataSet* grid, vtkIdType cell, const std::vector<int>& pointMap,
                  vtkIdList* ids, std::vector<int>& nodes) {
    grid->GetCellPoints(cell, ids);
    nodes.clear();
    for (vtkIdType i = 0; i < ids->GetNumberOfIds(); ++i) {
        nodes.push_back(pointMap[static_cast<std::size_t>(ids->GetId(i))]);
    }
}

}  // namespace

std::vector<long long> CellCollector::append(vtkDataSet* grid, const std::vector<int>& pointMap) {
    vtkNew<vtkIdList> ids;
    vtkDataArray* patchNumbers = findPatchArray(grid);
    vtkUnsignedCharArray* ghosts = grid->GetCellGhostArray();
    std::vector<long long> taken;
    taken.reserve(static_cast<std::size_t>(grid->GetNumberOfCells()));
    for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c) {
        const int dimension = cellDimension(grid->GetCellType(c));
        if (isGhost(ghosts, c)) {
            ++leftOut_.ghosts;
            continue;
        }
        collectNodes(grid, c, pointMap, ids, nodes_);
        if (dimension == 3 || dimension < 0) {
            appendCell(grid, c, pointMap);
            taken.push_back(c);
            mesh_.fileNumbers.push_back(cellsBefore_ + c);
        } else if (dimension == 2 && patchNumbers != nullptr) {
            patches_[static_cast<long long>(patchNumbers->GetComponent(c, 0))].append(nodes_);
        } else {
            ++(dimension == 2 ? leftOut_.unassignedSurfaces : leftOut_.lowerCells);
        }
    }
    cellsBefore_ += grid->GetNumberOfCells();
    for (const auto& [number, faces] : patches_) {
        patchNames_.emplace(number, patchName(grid, number));
    }
    return taken;
}

void CellCollector::appendCell(vtkDataSet* grid, long long cell, const std::vector<int>& pointMap) {
    const int type = grid->GetCellType(cell);
    switch (type) {
        case VTK_TETRA:
            return appendShape(CellKind::Tetrahedron);
        case VTK_PYRAMID:
            return appendShape(CellKind::Pyramid);
        case VTK_WEDGE:
            return appendShape(CellKind::Wedge);
        case VTK_VOXEL:
            // A voxel counts its corners row by row, a hexahedron around its bottom and top.
            std::swap(nodes_[2], nodes_[3]);
            std::swap(nodes_[6], nodes_[7]);
            return appendShape(CellKind::Hexahedron);
        case VTK_HEXAHEDRON:
            return appendShape(CellKind::Hexahedron);
        case VTK_PENTAGONAL_PRISM:
        case VTK_HEXAGONAL_PRISM:
            return appendPrism();
        case VTK_POLYHEDRON:
            return appendPolyhedron(grid, cell, pointMap);
        default: {
            const char* name = vtkCellTypes::GetClassNameFromTypeId(type);
            failOnInput(file_, "cell " + std::to_string(cellsBefore_ + cell) + " is a " + name +
                                   "; volume cells have to be linear shapes (tetrahedron, "
                                   "pyramid, wedge, hexahedron, voxel, prism, polyhedron)");
        }
    }
}

void CellCollector::appendShape(CellKind kind) {
    mesh_.kinds.push_back(kind);
    mesh_.cellNodes.append(nodes_);
    mesh_.cellPolygons.append({});
}

void CellCollector::addPolygon(std::vector<int> corners) {
    mesh_.cellPolygons.entries.push_back(mesh_.polygons.count());
    mesh_.polygons.append(corners);
}

void CellCollector::appendPrism() {
    const std::size_t n = nodes_.size() / 2;
    mesh_.kinds.push_back(CellKind::Polyhedron);
    mesh_.cellNodes.append(nodes_);
    const auto middle = nodes_.begin() + static_cast<std::ptrdiff_t>(n);
    addPolygon({nodes_.begin(), middle});
    addPolygon({middle, nodes_.end()});
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t j = (i + 1) % n;
        addPolygon({nodes_[i], nodes_[j], nodes_[n + j], nodes_[n + i]});
    }
    mesh_.cellPolygons.append({});
}

// The row of nodes is built from the faces, because a file may list further points for the cell.
void CellCollector::appendPolyhedron(vtkDataSet* grid, long long cell,
                                     const std::vector<int>& pointMap) {
    auto* unstructured = vtkUnstructuredGrid::SafeDownCast(grid);
    const vtkIdType* stream =
        unstructured->GetFaces()->GetPointer(unstructured->GetFaceLocations()->GetValue(cell));
    const vtkIdType faces = *stream++;
    nodes_.clear();
    for (vtkIdType f = 0; f < faces; ++f) {
        const vtkIdType corners = *stream++;
        for (vtkIdType i = 0; i < corners; ++i) {
            const int node = pointMap[static_cast<std::size_t>(*stream++)];
            mesh_.polygons.entries.push_back(node);
            if (std::find(nodes_.begin(), nodes_.end(), node) == nodes_.end()) {
                nodes_.push_back(node);
            }
        }
        mesh_.cellPolygons.entries.push_back(mesh_.polygons.count());
        mesh_.polygons.append({});
    }
    mesh_.kinds.push_back(CellKind::Polyhedron);
    mesh_.cellNodes.append(nodes_);
    mesh_.cellPolygons.append({});
}

std::vector<std::string> remarksOn(const LeftOut& leftOut) {
    std::vector<std::string> remarks;
    if (leftOut.ghosts > 0) {
        remarks.push_back(std::to_string(leftOut.ghosts) + " ghost cells are left out.");
    }
    if (leftOut.unassignedSurfaces > 0) {
        remarks.push_back(std::to_string(leftOut.unassignedSurfaces) +
                          " surface cells are left out: no integer cell array such as 'PatchId' "
                          "gives them a patch.");
    }
    if (leftOut.lowerCells > 0) {
        remarks.push_back(std::to_string(leftOut.lowerCells) +
                          " point and line cells are left out.");
    }
    return remarks;
}

bool isOwnVolumeCell(vtkDataSet* grid, long long cell) {
    return cellDimension(grid->GetCellType(cell)) == 3 && !isGhost(grid->GetCellGhostArray(), cell);
}

std::string patchName(vtkDataSet* grid, long long number) {
    auto* names =
        vtkStringArray::SafeDownCast(grid->GetFieldData()->GetAbstractArray("PatchNames"));
    const bool isNamed = names != nullptr && number >= 0 && number < names->GetNumberOfValues();
    return isNamed ? names->GetValue(number) : std::to_string(number);
}

std::map<long long, long long> patchSizes(vtkDataSet* grid) {
    std::map<long long, long long> sizes;
    vtkDataArray* numbers = findPatchArray(grid);
    for (vtkIdType c = 0; numbers != nullptr && c < grid->GetNumberOfCells(); ++c) {
        if (cellDimension(grid->GetCellType(c)) == 2) {
            ++sizes[static_cast<long long>(numbers->GetComponent(c, 0))];
        }
    }
    return sizes;
}

Rows surfaceFaces(vtkDataSet* grid, const std::vector<int>& pointMap) {
    vtkNew<vtkIdList> ids;
    std::vector<int> nodes;
    Rows faces;
    for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c) {
        if (cellDimension(grid->GetCellType(c)) != 2) {
            continue;
        }
        collectNodes(grid, c, pointMap, ids, nodes);
        if (std::find(nodes.begin(), nodes.end(), -1) != nodes.end()) {
            return {};
        }
        faces.append(nodes);
    }
    return faces;
}

}  // namespace weldline
