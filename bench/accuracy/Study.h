#pragma once

#include <string>

#include "Document.h"
#include "Runner.h"

namespace weldline::accuracy {

// All schemes on all cases with exact arrival times, cell shapes and mesh sizes: one table per case
// (its name), the tables "summary" and "damping" over all cases on the finest mesh, the table
// "time", and the pictures angle-CASE.svg. `pictures`: an existing folder, or empty for none.
void studySchemes(const Runner& runner, Document& document, const std::string& pictures);

// Numbers of smoothing passes, with exact and with disturbed arrival times: the table "smoothing"
// and the pictures map-CASE.svg.
void studySmoothing(const Runner& runner, Document& document, const std::string& pictures);

// A plate that is not filled to its end, without any weld line: the table "short-shot".
void studyShortShot(const Runner& runner, Document& document);

// Which settings give the same angles to the last bit: the table "same".
void studySwitch(const Runner& runner, Document& document);

// Cost of the RBF stencils and weights on the finest meshes: the table "rbf".
void studyRbfCost(Document& document);

// All schemes on one filling result: the table "data-STEM" for a file STEM.vtu or STEM.foam.
void studyDataSet(const Runner& runner, Document& document, const std::string& file);

}  // namespace weldline::accuracy
