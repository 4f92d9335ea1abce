#pragma once

#include <vtkDataSet.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OpenDataSet.h"
#include "SeriesFill.h"
#include "fill/FillTimeSeries.h"

// Internal to the reader.
namespace weldline {

// A piece that this rank has opened, and how many of its grids of volume cells it brought.
struct OwnPiece {
    std::size_t piece = 0;
    std::size_t volumes = 0;
};

// What the times of a piece say about its cells, all cells of its grids one after another.
struct PieceSeries {
    FillTimeSeries cells;
    std::vector<double> times;       // at which the array is there
    std::int64_t without = 0;        // number of times at which it is missing
    std::vector<vtkDataSet*> grids;  // borrowed
};

struct SeriesRequest {
    std::string field;
    std::optional<double> latest;  // later times do not count
    const SeriesOptions& options;
};

// Goes through the times of all pieces that this rank has opened and that have cells; two steps of
// the array are in memory at a time. Throws InputError.
std::vector<PieceSeries> readOwnSeries(const PieceList& list, const std::vector<OwnPiece>& pieces,
                                       const OpenedDataSet& opened, const SeriesRequest& request);

}  // namespace weldline
