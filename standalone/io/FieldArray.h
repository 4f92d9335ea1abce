#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "DataSet.h"

class vtkDataSet;

namespace weldline {

class Ranks;

// The arrays of grids of volume cells, by name; of several pieces taken together.
struct GridArrays {
    struct CellArray {
        long long grids = 0;  // that have it
        int components = 1;   // of the first that has another number than 1; 0: no numbers
    };
    long long grids = 0;
    std::map<std::string, CellArray> cells;
    std::set<std::string> points;
};
GridArrays arraysOf(const std::vector<vtkDataSet*>& volumes);

// What all ranks have together; collective.
GridArrays arraysOfAll(Ranks& ranks, const GridArrays& own);

// Name of the fill time array that the cells of all grids hold: the one asked for, or, when none
// was asked for, "FillTime" or "fillTime". Throws InputError that names what there is instead.
std::string findField(const std::string& file, const GridArrays& arrays,
                      const ReadOptions& options);

// Appends the values of the cells listed.
void appendField(vtkDataSet* grid, const std::string& field, const std::vector<long long>& cells,
                 std::vector<double>& values);

}  // namespace weldline
