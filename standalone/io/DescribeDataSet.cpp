#include <vtkCellData.h>
#include <vtkCellTypes.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>

#include "DataSet.h"
#include "DeriveFillTime.h"
#include "GridCells.h"
#include "GridCheck.h"
#include "OpenDataSet.h"
#include "VtkMessages.h"

namespace weldline {
namespace {

// "vtkHexahedron" becomes "Hexahedron".
std::string shapeName(int cellType) {
    const std::string name = vtkCellTypes::GetClassNameFromTypeId(cellType);
    return name.starts_with("vtk") ? name.substr(3) : name;
}

// Writes float and double out where VTK only knows C++ names of types.
std::string typeName(vtkAbstractArray* array) {
    const int type = array->GetDataType();
    const int bits = 8 * array->GetDataTypeSize();
    switch (type) {
        case VTK_FLOAT:
        case VTK_DOUBLE:
            return "Float" + std::to_string(bits);
        case VTK_UNSIGNED_CHAR:
        case VTK_UNSIGNED_SHORT:
        case VTK_UNSIGNED_INT:
        case VTK_UNSIGNED_LONG:
        case VTK_UNSIGNED_LONG_LONG:
            return "UInt" + std::to_string(bits);
        case VTK_STRING:
            return "String";
        default:
            return "Int" + std::to_string(bits);
    }
}

void addRange(vtkDataArray* values, DataSetInfo::Array& array, bool isFirst) {
    double low = isFirst ? std::numeric_limits<double>::infinity() : array.minimum;
    double high = isFirst ? -std::numeric_limits<double>::infinity() : array.maximum;
    for (vtkIdType i = 0; i < values->GetNumberOfTuples(); ++i) {
        const double value = values->GetComponent(i, 0);
        if (std::isfinite(value)) {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    // No finite value at all leaves the range at zero.
    array.minimum = low <= high ? low : 0.0;
    array.maximum = low <= high ? high : 0.0;
}

void addArrays(vtkDataSetAttributes* attributes, const char* where,
               std::vector<DataSetInfo::Array>& arrays) {
    for (int a = 0; a < attributes->GetNumberOfArrays(); ++a) {
        vtkAbstractArray* source = attributes->GetAbstractArray(a);
        const std::string name = source->GetName() == nullptr ? "" : source->GetName();
        auto known = std::find_if(arrays.begin(), arrays.end(), [&](const auto& array) {
            return array.name == name && array.where == where;
        });
        const bool isFirst = known == arrays.end();
        if (isFirst) {
            arrays.push_back({name, where, typeName(source), source->GetNumberOfComponents()});
            known = arrays.end() - 1;
        }
        if (auto* values = vtkDataArray::SafeDownCast(source)) {
            addRange(values, *known, isFirst);
        }
    }
}

void addBox(vtkDataSet* grid, DataSetInfo& info, bool isFirst) {
    if (grid->GetNumberOfPoints() == 0) {
        return;
    }
    std::array<double, 6> box{};
    grid->GetBounds(box.data());
    const Vec3 low{box[0], box[2], box[4]};
    const Vec3 high{box[1], box[3], box[5]};
    info.low = isFirst ? low
                       : Vec3{std::min(low.x, info.low.x), std::min(low.y, info.low.y),
                              std::min(low.z, info.low.z)};
    info.high = isFirst ? high
                        : Vec3{std::max(high.x, info.high.x), std::max(high.y, info.high.y),
                               std::max(high.z, info.high.z)};
}

bool hasPhaseFraction(const std::vector<DataSetInfo::Array>& arrays) {
    return std::any_of(arrays.begin(), arrays.end(), [](const auto& array) {
        return array.where == "cells" && isPhaseFraction(array.name, array.components);
    });
}

// Each part of a decomposed case has some of a patch's faces.
void addSurfaces(const std::vector<Block>& surfaces, bool isCase,
                 std::vector<DataSetInfo::Count>& patches) {
    for (const Block& block : surfaces) {
        const auto known = std::find_if(patches.begin(), patches.end(), [&](const auto& patch) {
            return isCase && patch.name == block.name;
        });
        if (known == patches.end()) {
            patches.push_back({block.name, block.grid->GetNumberOfCells()});
        } else {
            known->count += block.grid->GetNumberOfCells();
        }
    }
}

}  // namespace

DataSetInfo describeDataSet(const std::string& file, const std::string& time) {
    const VtkMessages silence;  // also of what VTK would say while memory ends
    const PieceList list = listPieces(file);
    OpenedDataSet opened;
    for (const Piece& piece : list.pieces) {
        append(opened, openPiece(list, piece, time));
    }
    commonTime(file, opened.pieceTimes, time);
    DataSetInfo info;
    info.file = file;
    info.format = list.format;
    info.times = opened.times;
    info.remarks = opened.remarks;
    std::map<int, long long> shapes;
    std::map<long long, long long> numberedPatches;
    std::map<long long, std::string> patchNames;
    for (const Block& block : opened.volumes) {
        vtkDataSet* grid = block.grid;
        addBox(grid, info, info.points == 0);
        info.points += grid->GetNumberOfPoints();
        info.cells += grid->GetNumberOfCells();
        for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c) {
            ++shapes[grid->GetCellType(c)];
        }
        for (const auto& [number, faces] : patchSizes(grid)) {
            numberedPatches[number] += faces;
            patchNames.emplace(number, patchName(grid, number));
        }
        if (!block.name.empty()) {
            info.blocks.push_back({block.name, grid->GetNumberOfCells()});
        }
        addArrays(grid->GetCellData(), "cells", info.arrays);
        addArrays(grid->GetPointData(), "points", info.arrays);
    }
    for (const auto& [type, count] : shapes) {
        info.cellShapes.push_back({shapeName(type), count});
    }
    for (const auto& [number, faces] : numberedPatches) {
        info.patches.push_back({patchNames[number], faces});
    }
    addSurfaces(opened.surfaces, list.isCase(), info.patches);
    info.hasSeries = info.times.size() > 1 && hasPhaseFraction(info.arrays);
    return info;
}

}  // namespace weldline
