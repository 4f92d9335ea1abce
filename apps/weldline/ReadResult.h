#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Arguments.h"
#include "FindLines.h"
#include "io/DataSet.h"
#include "mesh/FvMesh.h"

namespace weldline {

// A result of `analyze`, read back in one process, with its weld lines found anew.
struct ResultModel {
    std::string file;
    FvMesh mesh;
    std::vector<float> fillTime;   // per cell; exactly 0 where the melt did not come
    std::vector<Vec3> directions;  // of the flow, per cell; also where the run closed gaps
    std::vector<double> angles;    // per node, degrees
    ResultNotes notes;
    FoundLines found;
};

// The data set of a result, its meeting angles as the first point field. Throws InputError, also
// where there are none.
DataSet readResultData(const std::string& file, ReadOptions read);

// Throws InputError, also where the data set has no meeting angles.
ResultModel readResult(const std::string& file, const LineOptions& options,
                       const std::vector<std::string>& carry = {});

}  // namespace weldline
