#include "GridCheck.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDataArray.h>
#include <vtkGenericCell.h>
#include <vtkIdTypeArray.h>
#include <vtkPointData.h>
#include <vtkPointSet.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <array>
#include <cmath>

#include "OpenDataSet.h"

namespace weldline {
namespace {

std::string number(vtkIdType value) {
    return std::to_string(static_cast<long long>(value));
}

void checkPoints(const std::string& file, vtkPointSet* grid) {
    vtkPoints* points = grid->GetPoints();
    const vtkIdType count = points == nullptr ? 0 : points->GetNumberOfPoints();
    std::array<double, 3> x{};
    for (vtkIdType p = 0; p < count; ++p) {
        points->GetPoint(p, x.data());
        if (!std::isfinite(x[0]) || !std::isfinite(x[1]) || !std::isfinite(x[2])) {
            failOnInput(file, "point " + number(p) + " has a coordinate that is no finite number");
        }
    }
}

void checkCellArray(const std::string& file, vtkCellArray* cells, vtkIdType points) {
    vtkDataArray* offsets = cells->GetOffsetsArray();
    vtkDataArray* nodes = cells->GetConnectivityArray();
    const vtkIdType count = offsets->GetNumberOfTuples();
    const vtkIdType length = nodes->GetNumberOfTuples();
    vtkIdType last = 0;
    for (vtkIdType c = 0; c < count; ++c) {
        const auto offset = static_cast<vtkIdType>(offsets->GetComponent(c, 0));
        if (offset < last || offset > length || (c == 0 && offset != 0)) {
            failOnInput(file, "the node list of cell " + number(c) + " is damaged");
        }
        last = offset;
    }
    if (last != length) {
        failOnInput(file, "the node lists of the cells are damaged");
    }
    for (vtkIdType i = 0; i < length; ++i) {
        const auto node = static_cast<vtkIdType>(nodes->GetComponent(i, 0));
        if (node < 0 || node >= points) {
            failOnInput(file, "a cell names point " + number(node) + ", but the points are 0 to " +
                                  number(points - 1));
        }
    }
}

// Number of nodes that a cell of the type must have, 0 where it is free.
vtkIdType nodesOfType(int type) {
    switch (type) {
        case VTK_TRIANGLE:
            return 3;
        case VTK_PIXEL:
        case VTK_QUAD:
        case VTK_TETRA:
            return 4;
        case VTK_PYRAMID:
            return 5;
        case VTK_WEDGE:
            return 6;
        case VTK_VOXEL:
        case VTK_HEXAHEDRON:
            return 8;
        case VTK_PENTAGONAL_PRISM:
            return 10;
        case VTK_HEXAGONAL_PRISM:
            return 12;
        default:
            return 0;
    }
}

void checkCellSizes(const std::string& file, vtkUnstructuredGrid* grid) {
    vtkUnsignedCharArray* types = grid->GetCellTypesArray();
    const vtkIdType cells = grid->GetNumberOfCells();
    if (cells > 0 && (types == nullptr || types->GetNumberOfTuples() != cells)) {
        failOnInput(file, "the list of cell types does not fit the number of cells");
    }
    for (vtkIdType c = 0; c < cells; ++c) {
        const int type = types->GetValue(c);
        const vtkIdType needed = nodesOfType(type);
        const vtkIdType found = grid->GetCells()->GetCellSize(c);
        if (needed != 0 && found != needed) {
            failOnInput(file, "cell " + number(c) + " has " + number(found) +
                                  " nodes; its shape needs " + number(needed));
        }
    }
}

// A polyhedron's faces are one stream: their number, then each as its size and its corners.
void checkFaceStream(const std::string& file, vtkIdTypeArray* faces, vtkIdType at, vtkIdType points,
                     vtkIdType cell) {
    const vtkIdType end = faces->GetNumberOfTuples();
    const auto damaged = [&]() {
        failOnInput(file, "the faces of cell " + number(cell) + " are damaged");
    };
    if (at < 0 || at >= end) {
        damaged();
    }
    const vtkIdType count = faces->GetValue(at++);
    for (vtkIdType f = 0; f < count; ++f) {
        if (at >= end || faces->GetValue(at) < 0 || faces->GetValue(at) >= end - at) {
            damaged();
        }
        const vtkIdType faceEnd = at + 1 + faces->GetValue(at);
        for (++at; at < faceEnd; ++at) {
            if (faces->GetValue(at) < 0 || faces->GetValue(at) >= points) {
                damaged();
            }
        }
    }
}

void checkPolyhedra(const std::string& file, vtkUnstructuredGrid* grid) {
    vtkIdTypeArray* faces = grid->GetFaces();
    vtkIdTypeArray* locations = grid->GetFaceLocations();
    for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c) {
        if (grid->GetCellTypesArray()->GetValue(c) != VTK_POLYHEDRON) {
            continue;
        }
        if (faces == nullptr || locations == nullptr ||
            locations->GetNumberOfTuples() != grid->GetNumberOfCells()) {
            failOnInput(file, "cell " + number(c) + " is a polyhedron, but its faces are missing");
        }
        checkFaceStream(file, faces, locations->GetValue(c), grid->GetNumberOfPoints(), c);
    }
}

void checkArrays(const std::string& file, vtkDataSetAttributes* arrays, vtkIdType tuples) {
    for (int a = 0; a < arrays->GetNumberOfArrays(); ++a) {
        vtkAbstractArray* array = arrays->GetAbstractArray(a);
        if (array->GetNumberOfTuples() != tuples) {
            const std::string name = array->GetName() == nullptr ? "" : array->GetName();
            failOnInput(file, "the array '" + name + "' has " + number(array->GetNumberOfTuples()) +
                                  " values where " + number(tuples) + " are needed");
        }
    }
}

std::array<int, 256> dimensionsOfTypes() {
    std::array<int, 256> table{};
    for (int type = 0; type < 256; ++type) {
        const auto cell = vtkSmartPointer<vtkCell>::Take(vtkGenericCell::InstantiateCell(type));
        table[static_cast<std::size_t>(type)] = cell == nullptr ? -1 : cell->GetCellDimension();
    }
    return table;
}

}  // namespace

int cellDimension(int cellType) {
    static const std::array<int, 256> table = dimensionsOfTypes();
    return table[static_cast<std::size_t>(cellType)];
}

long long countVolumeCells(vtkDataSet* grid) {
    long long count = 0;
    for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c) {
        count += cellDimension(grid->GetCellType(c)) == 3 ? 1 : 0;
    }
    return count;
}

void checkGrid(const std::string& file, vtkDataSet* grid) {
    if (auto* pointSet = vtkPointSet::SafeDownCast(grid)) {
        checkPoints(file, pointSet);
    }
    const vtkIdType points = grid->GetNumberOfPoints();
    if (auto* unstructured = vtkUnstructuredGrid::SafeDownCast(grid)) {
        if (unstructured->GetCells() != nullptr) {
            checkCellArray(file, unstructured->GetCells(), points);
        }
        checkCellSizes(file, unstructured);
        checkPolyhedra(file, unstructured);
    } else if (auto* surface = vtkPolyData::SafeDownCast(grid)) {
        for (vtkCellArray* cells : {surface->GetVerts(), surface->GetLines(), surface->GetPolys(),
                                    surface->GetStrips()}) {
            checkCellArray(file, cells, points);
        }
    }
    checkArrays(file, grid->GetPointData(), points);
    checkArrays(file, grid->GetCellData(), grid->GetNumberOfCells());
}

}  // namespace weldline
