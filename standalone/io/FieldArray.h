#pragma once

#include <string>
#include <vector>

#include "DataSet.h"

class vtkDataSet;

namespace weldline {

// Name of the fill time array that the blocks' cells hold: the one asked for, or, when none was
// asked for, "FillTime" or "fillTime". Throws InputError that names what there is instead.
std::string findField(const std::string& file, const std::vector<vtkDataSet*>& volumes,
                      const ReadOptions& options);

// Appends the values of the cells listed.
void appendField(vtkDataSet* grid, const std::string& field, const std::vector<long long>& cells,
                 std::vector<double>& values);

}  // namespace weldline
