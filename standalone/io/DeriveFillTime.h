#pragma once

#include <optional>
#include <string>
#include <vector>

#include "DataSet.h"
#include "OpenDataSet.h"
#include "PieceSeries.h"

// Internal to the reader.
namespace weldline {

// Whether a cell array is called and made like the share of melt in the cells: alpha..., in small
// or capital letters, one component.
bool isPhaseFraction(const std::string& name, int components);

// Goes through the times up to `latest` of the pieces that this rank has opened and gives their
// grids of volume cells the array "FillTime": NaN where a cell is never full, else above 0.
// Nothing where the options do not ask for it. Collective; all ranks throw the same.
std::optional<SeriesFill> deriveFillTime(Ranks& ranks, const PieceList& list,
                                         const std::vector<OwnPiece>& pieces,
                                         const OpenedDataSet& opened, std::optional<double> latest,
                                         const ReadOptions& options);

}  // namespace weldline
