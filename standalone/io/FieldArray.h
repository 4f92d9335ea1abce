#pragma once

#include <map>
#include <string>
#include <vector>

#include "DataSet.h"

class vtkDataSet;

namespace weldline {

class Ranks;

// The arrays of grids of volume cells, by name; of several pieces taken together.
struct GridArrays {
    struct Array {
        long long grids = 0;  // that have it
        int components = 1;   // of the first that has another number than 1; 0: no numbers
    };
    using ByName = std::map<std::string, Array>;
    long long grids = 0;
    ByName cells;
    ByName points;
};
GridArrays arraysOf(const std::vector<vtkDataSet*>& volumes);

// What all ranks have together; collective.
GridArrays arraysOfAll(Ranks& ranks, const GridArrays& own);

// Name of the fill time array that the cells of all grids hold: the one asked for, or, when none
// was asked for, "FillTime" or "fillTime". Throws InputError that names what there is instead.
// `what` is the array in words.
std::string findField(const std::string& file, const GridArrays& arrays, const ReadOptions& options,
                      const std::string& what = "fill time");

// Throws InputError unless the points of all grids hold this array of one component.
void checkPointField(const std::string& file, const GridArrays& arrays, const std::string& name);

// Throws InputError unless cells or points of all grids hold this array of one component.
void checkCarried(const std::string& file, const GridArrays& arrays, const std::string& name);

// The values of all points.
std::vector<double> pointValues(vtkDataSet* grid, const std::string& field);

// Appends the values of the cells listed; where the cells have no such array, the means of those of
// their points.
void appendField(vtkDataSet* grid, const std::string& field, const std::vector<long long>& cells,
                 std::vector<double>& values);

}  // namespace weldline
