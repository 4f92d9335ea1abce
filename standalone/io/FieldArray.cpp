#include "FieldArray.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkIdList.h>
#include <vtkNew.h>
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
                                const std::string& field, const std::string& what) {
    if (arrays.points.count(field) > 0) {
        failOnInput(file,
                    "'" + field + "' is a point array; the " + what + " has to be a cell array");
    }
    const std::string list = listOfArrays(arrays);
    failOnInput(file, "there is no cell array '" + field + "'; " +
                          (list.empty() ? "the cells have no arrays, but need the " + what
                                        : "name the " + what + " among the cell arrays " + list));
}

void checkField(const std::string& file, const std::string& field, int components,
                const std::string& what) {
    if (components == 0) {
        failOnInput(file, "the cell array '" + field + "' holds no numbers");
    }
    if (components != 1) {
        failOnInput(file, "the cell array '" + field + "' has " + std::to_string(components) +
                              " components; the " + what + " has one");
    }
}

void add(GridArrays::ByName& sum, const std::string& name, GridArrays::Array array) {
    GridArrays::Array& known = sum[name];
    known.grids += array.grids;
    known.components = known.components == 1 ? array.components : known.components;
}

void addArrays(vtkFieldData* data, GridArrays::ByName& sum) {
    for (int a = 0; a < data->GetNumberOfArrays(); ++a) {
        const char* name = data->GetAbstractArray(a)->GetName();
        vtkDataArray* numbers = data->GetArray(a);
        add(sum, name == nullptr ? "" : name,
            {1, numbers == nullptr ? 0 : numbers->GetNumberOfComponents()});
    }
}

void put(Packer& packer, const GridArrays::ByName& arrays) {
    packer.put(arrays.size());
    for (const auto& [name, array] : arrays) {
        packer.put(name).put(array.grids).put(array.components);
    }
}

void get(Unpacker& unpacker, GridArrays::ByName& sum) {
    for (auto left = unpacker.get<std::size_t>(); left > 0; --left) {
        const auto name = unpacker.get<std::string>();
        GridArrays::Array array;
        unpacker.get(array.grids);
        unpacker.get(array.components);
        add(sum, name, array);
    }
}

// Empty where all grids have this array of one component.
std::string problemOf(const GridArrays& arrays, const GridArrays::ByName& list,
                      const std::string& name) {
    const auto found = list.find(name);
    if (found == list.end()) {
        return "there is no array '" + name + "'";
    }
    if (found->second.grids != arrays.grids) {
        return "not all blocks have the array '" + name + "'";
    }
    if (found->second.components != 1) {
        return "the array '" + name + "' is not one number each";
    }
    return {};
}

double meanOfPoints(vtkDataSet* grid, vtkDataArray* array, long long cell, vtkIdList* points) {
    grid->GetCellPoints(cell, points);
    double sum = 0.0;
    for (vtkIdType p = 0; p < points->GetNumberOfIds(); ++p) {
        sum += array->GetComponent(points->GetId(p), 0);
    }
    return sum / static_cast<double>(points->GetNumberOfIds());
}

}  // namespace

GridArrays arraysOf(const std::vector<vtkDataSet*>& volumes) {
    GridArrays arrays;
    arrays.grids = static_cast<long long>(volumes.size());
    for (vtkDataSet* grid : volumes) {
        addArrays(grid->GetCellData(), arrays.cells);
        addArrays(grid->GetPointData(), arrays.points);
    }
    return arrays;
}

GridArrays arraysOfAll(Ranks& ranks, const GridArrays& own) {
    Packer packer;
    packer.put(own.grids);
    put(packer, own.cells);
    put(packer, own.points);
    GridArrays all;
    for (const Bytes& message : gatherToAll(ranks, packer.take())) {
        Unpacker unpacker(message);
        all.grids += unpacker.get<long long>();
        get(unpacker, all.cells);
        get(unpacker, all.points);
    }
    return all;
}

std::string findField(const std::string& file, const GridArrays& arrays, const ReadOptions& options,
                      const std::string& what) {
    const std::vector<std::string> names = candidates(options);
    for (const std::string& field : names) {
        const auto found = arrays.cells.find(field);
        if (found != arrays.cells.end() && found->second.grids == arrays.grids) {
            checkField(file, field, found->second.components, what);
            return field;
        }
    }
    for (const std::string& field : names) {
        if (arrays.cells.count(field) > 0) {
            failOnInput(file, "not all blocks have the cell array '" + field +
                                  "'; every block with volume cells needs it");
        }
    }
    failOnMissing(file, arrays, options.field, what);
}

void checkPointField(const std::string& file, const GridArrays& arrays, const std::string& name) {
    const std::string problem = problemOf(arrays, arrays.points, name);
    if (!problem.empty()) {
        failOnInput(file, problem + " on the points");
    }
}

void checkCarried(const std::string& file, const GridArrays& arrays, const std::string& name) {
    const bool isOnCells = arrays.cells.count(name) > 0;
    const std::string problem = problemOf(arrays, isOnCells ? arrays.cells : arrays.points, name);
    if (!problem.empty()) {
        failOnInput(file, problem + (isOnCells ? " on the cells" : " on cells or points"));
    }
}

std::vector<double> pointValues(vtkDataSet* grid, const std::string& field) {
    vtkDataArray* array = grid->GetPointData()->GetArray(field.c_str());
    std::vector<double> values(static_cast<std::size_t>(grid->GetNumberOfPoints()));
    for (std::size_t p = 0; p < values.size(); ++p) {
        values[p] = array->GetComponent(static_cast<vtkIdType>(p), 0);
    }
    return values;
}

void appendField(vtkDataSet* grid, const std::string& field, const std::vector<long long>& cells,
                 std::vector<double>& values) {
    vtkDataArray* ofCells = grid->GetCellData()->GetArray(field.c_str());
    vtkDataArray* ofPoints = grid->GetPointData()->GetArray(field.c_str());
    vtkNew<vtkIdList> points;
    values.reserve(values.size() + cells.size());
    for (const long long cell : cells) {
        values.push_back(ofCells != nullptr ? ofCells->GetComponent(cell, 0)
                                            : meanOfPoints(grid, ofPoints, cell, points));
    }
}

}  // namespace weldline
