#include "FieldArray.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include "OpenDataSet.h"
#include "comm/Messages.h"
#include "comm/Packing.h"

namespace weldline {
namespace {

std::vector<std::string> candidates(const ReadOptions& options) {
    if (options.fieldGiven || options.field != "FillTime") {
        return {options.field};
    }
    return {options.field, "fillTime"};
}

std::string listOfArrays(const GridArrays& arrays) {
    std::string list;
    for (const auto& [name, array] : arrays.cells) {
        list += (list.empty() ? "'" : ", '") + name + "'";
    }
    return list;
}

[[noreturn]] void failOnMissing(const std::string& file, const GridArrays& arrays,
                                const std::string& field) {
    if (arrays.points.count(field) > 0) {
        failOnInput(file, "'" + field + "' is a point array; the fill time has to be a cell array");
    }
    const std::string list = listOfArrays(arrays);
    failOnInput(file, "there is no cell array '" + field + "'; " +
                          (list.empty() ? "the cells have no arrays, but need the fill time"
                                        : "name the fill time among the cell arrays " + list));
}

void checkField(const std::string& file, const std::string& field, int components) {
    if (components == 0) {
        failOnInput(file, "the cell array '" + field + "' holds no numbers");
    }
    if (components != 1) {
        failOnInput(file, "the cell array '" + field + "' has " + std::to_string(components) +
                              " components; the fill time has one");
    }
}

void add(GridArrays& sum, const std::string& name, GridArrays::CellArray array) {
    GridArrays::CellArray& known = sum.cells[name];
    known.grids += array.grids;
    known.components = known.components == 1 ? array.components : known.components;
}

std::string nameOf(vtkFieldData* data, int array) {
    const char* name = data->GetAbstractArray(array)->GetName();
    return name == nullptr ? "" : name;
}

}  // namespace

GridArrays arraysOf(const std::vector<vtkDataSet*>& volumes) {
    GridArrays arrays;
    arrays.grids = static_cast<long long>(volumes.size());
    for (vtkDataSet* grid : volumes) {
        vtkCellData* cells = grid->GetCellData();
        for (int a = 0; a < cells->GetNumberOfArrays(); ++a) {
            vtkDataArray* numbers = cells->GetArray(a);
            add(arrays, nameOf(cells, a),
                {1, numbers == nullptr ? 0 : numbers->GetNumberOfComponents()});
        }
        for (int a = 0; a < grid->GetPointData()->GetNumberOfArrays(); ++a) {
            arrays.points.insert(nameOf(grid->GetPointData(), a));
        }
    }
    return arrays;
}

GridArrays arraysOfAll(Ranks& ranks, const GridArrays& own) {
    Packer packer;
    packer.put(own.grids).put(own.cells.size());
    for (const auto& [name, array] : own.cells) {
        packer.put(name).put(array.grids).put(array.components);
    }
    packer.put(std::vector<std::string>(own.points.begin(), own.points.end()));
    GridArrays all;
    for (const Bytes& message : gatherToAll(ranks, packer.take())) {
        Unpacker unpacker(message);
        all.grids += unpacker.get<long long>();
        for (auto left = unpacker.get<std::size_t>(); left > 0; --left) {
            const auto name = unpacker.get<std::string>();
            GridArrays::CellArray array;
            unpacker.get(array.grids);
            unpacker.get(array.components);
            add(all, name, array);
        }
        const auto points = unpacker.get<std::vector<std::string>>();
        all.points.insert(points.begin(), points.end());
    }
    return all;
}

std::string findField(const std::string& file, const GridArrays& arrays,
                      const ReadOptions& options) {
    const std::vector<std::string> names = candidates(options);
    for (const std::string& field : names) {
        const auto found = arrays.cells.find(field);
        if (found != arrays.cells.end() && found->second.grids == arrays.grids) {
            checkField(file, field, found->second.components);
            return field;
        }
    }
    for (const std::string& field : names) {
        if (arrays.cells.count(field) > 0) {
            failOnInput(file, "not all blocks have the cell array '" + field +
                                  "'; every block with volume cells needs it");
        }
    }
    failOnMissing(file, arrays, options.field);
}

void appendField(vtkDataSet* grid, const std::string& field, const std::vector<long long>& cells,
                 std::vector<double>& values) {
    vtkDataArray* array = grid->GetCellData()->GetArray(field.c_str());
    values.reserve(values.size() + cells.size());
    for (const long long cell : cells) {
        values.push_back(array->GetComponent(cell, 0));
    }
}

}  // namespace weldline
