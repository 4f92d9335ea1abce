#include "FieldArray.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include <algorithm>
#include <set>

#include "OpenDataSet.h"

namespace weldline {
namespace {

std::vector<std::string> candidates(const ReadOptions& options) {
    if (options.fieldGiven || options.field != "FillTime") {
        return {options.field};
    }
    return {options.field, "fillTime"};
}

std::string listOfArrays(const std::vector<vtkDataSet*>& volumes) {
    std::set<std::string> names;
    for (vtkDataSet* grid : volumes) {
        for (int a = 0; a < grid->GetCellData()->GetNumberOfArrays(); ++a) {
            const char* name = grid->GetCellData()->GetAbstractArray(a)->GetName();
            names.insert(name == nullptr ? "" : name);
        }
    }
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "'" : ", '") + name + "'";
    }
    return list;
}

[[noreturn]] void failOnMissing(const std::string& file, const std::vector<vtkDataSet*>& volumes,
                                const std::string& field) {
    const bool onPoints = std::any_of(volumes.begin(), volumes.end(), [&](vtkDataSet* grid) {
        return grid->GetPointData()->HasArray(field.c_str()) != 0;
    });
    if (onPoints) {
        failOnInput(file, "'" + field + "' is a point array; the fill time has to be a cell array");
    }
    const std::string list = listOfArrays(volumes);
    failOnInput(file, "there is no cell array '" + field + "'; " +
                          (list.empty() ? "the cells have no arrays, but need the fill time"
                                        : "name the fill time among the cell arrays " + list));
}

void checkField(const std::string& file, vtkDataSet* grid, const std::string& field) {
    vtkDataArray* array = grid->GetCellData()->GetArray(field.c_str());
    if (array == nullptr) {
        failOnInput(file, "the cell array '" + field + "' holds no numbers");
    }
    if (array->GetNumberOfComponents() != 1) {
        failOnInput(file, "the cell array '" + field + "' has " +
                              std::to_string(array->GetNumberOfComponents()) +
                              " components; the fill time has one");
    }
}

}  // namespace

std::string findField(const std::string& file, const std::vector<vtkDataSet*>& volumes,
                      const ReadOptions& options) {
    for (const std::string& field : candidates(options)) {
        const bool everywhere = std::all_of(volumes.begin(), volumes.end(), [&](vtkDataSet* grid) {
            return grid->GetCellData()->HasArray(field.c_str()) != 0;
        });
        if (everywhere) {
            for (vtkDataSet* grid : volumes) {
                checkField(file, grid, field);
            }
            return field;
        }
    }
    for (const std::string& field : candidates(options)) {
        const bool somewhere = std::any_of(volumes.begin(), volumes.end(), [&](vtkDataSet* grid) {
            return grid->GetCellData()->HasArray(field.c_str()) != 0;
        });
        if (somewhere) {
            failOnInput(file, "not all blocks have the cell array '" + field +
                                  "'; every block with volume cells needs it");
        }
    }
    failOnMissing(file, volumes, options.field);
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
