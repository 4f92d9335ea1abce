#include "DeriveFillTime.h"

#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>

#include <algorithm>
#include <cctype>
#include <limits>

#include "FieldArray.h"
#include "GridCells.h"
#include "PieceSeries.h"
#include "base/ShortNumber.h"
#include "comm/Agreement.h"
#include "comm/Messages.h"

namespace weldline {
namespace {

constexpr double none = std::numeric_limits<double>::max();

std::string listOf(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "'" : ", '") + name + "'";
    }
    return list;
}

std::vector<std::string> phaseFractions(const GridArrays& arrays) {
    std::vector<std::string> names;
    for (const auto& [name, array] : arrays.cells) {
        if (isPhaseFraction(name, array.components) && array.grids == arrays.grids) {
            names.push_back(name);
        }
    }
    return names;
}

std::string phaseFraction(const std::string& file, const GridArrays& arrays,
                          const SeriesOptions& options) {
    if (!options.field.empty()) {
        ReadOptions named;
        named.field = options.field;
        named.fieldGiven = true;
        return findField(file, arrays, named, "phase fraction");
    }
    const std::vector<std::string> names = phaseFractions(arrays);
    if (names.size() > 1) {
        failOnInput(file, "several cell arrays could be the phase fraction: " + listOf(names) +
                              "; name one with 'weldline filltime --field'");
    }
    if (names.empty()) {
        std::vector<std::string> all;
        for (const auto& [name, array] : arrays.cells) {
            all.push_back(name);
        }
        failOnInput(file, "no cell array is named alpha...; " +
                              (all.empty() ? "the cells have no arrays, but need a phase fraction"
                                           : "name the phase fraction with --field; there are " +
                                                 listOf(all)));
    }
    return names.front();
}

bool hasFillTime(const GridArrays& arrays) {
    return arrays.cells.count("FillTime") > 0 || arrays.cells.count("fillTime") > 0;
}

void checkTimes(Ranks& ranks, const std::string& file, const std::string& field,
                const std::vector<PieceSeries>& own, SeriesFill& fill) {
    const std::vector<double> mine = own.empty() ? std::vector<double>{} : own.front().times;
    bool same = std::all_of(own.begin(), own.end(),
                            [&](const PieceSeries& piece) { return piece.times == mine; });
    std::vector<double> times;
    for (const Bytes& message : gatherToAll(ranks, toBytes(mine))) {
        const std::vector<double> theirs = fromBytes<double>(message);
        times = times.empty() ? theirs : times;
    }
    same = same && (own.empty() || mine == times);
    agreeOnFailure(ranks, [&] {
        if (!same) {
            failOnInput(file, "its parts hold '" + field +
                                  "' at different times; a fill time needs all parts at all times");
        }
        if (times.size() < 2) {
            failOnInput(file, "'" + field +
                                  "' is there at one time only; a fill time needs it at "
                                  "several times of the filling");
        }
        if (times.front() < 0.0) {
            failOnInput(file, "the first time is " + shortNumber(times.front()) +
                                  "; a filling starts at time 0 or later");
        }
    });
    fill.steps = static_cast<std::int64_t>(times.size());
    fill.firstTime = times.front();
    fill.lastTime = times.back();
    for (std::size_t i = 1; i < times.size(); ++i) {
        fill.largestStep = std::max(fill.largestStep, times[i] - times[i - 1]);
    }
}

// Counts one piece and gives its grids the array.
class PieceResult {
  public:
    PieceResult(const FillTimeSeries& cells, double startTime, SeriesFill& fill)
        : cells_(cells), startTime_(startTime), fill_(fill) {}

    void addTo(vtkDataSet* grid) {
        vtkNew<vtkDoubleArray> array;
        array->SetName("FillTime");
        array->SetNumberOfValues(grid->GetNumberOfCells());
        for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c, ++at_) {
            array->SetValue(c, cells_.wasFullAtStart(at_) ? startTime_ : cells_.times()[at_]);
            if (isOwnVolumeCell(grid, c)) {
                count(array->GetValue(c));
            }
        }
        grid->GetCellData()->AddArray(array);
    }

  private:
    void count(double time) {
        ++fill_.cells;
        ++(cells_.isReached(at_) ? fill_.filled : fill_.never);
        fill_.atStart += cells_.wasFullAtStart(at_) ? 1 : 0;
        fill_.emptied += cells_.hasEmptied(at_) ? 1 : 0;
        fill_.noNumber += cells_.hasNoNumber(at_) ? 1 : 0;
        if (cells_.isReached(at_)) {
            fill_.earliest = std::min(fill_.earliest, time);
            fill_.latest = std::max(fill_.latest, time);
        }
    }

    const FillTimeSeries& cells_;
    double startTime_;
    SeriesFill& fill_;
    std::size_t at_ = 0;
};

// A fill time of 0 may be read as "the melt never came", so cells that are full at time 0 get a
// millionth of the earliest crossing (of one time unit, when there is none); see
// docs/decisions/fill-time-zero.md.
double startTimeOf(Ranks& ranks, const std::vector<PieceSeries>& own, double firstTime) {
    double earliest = none;
    for (const PieceSeries& piece : own) {
        for (const double time : piece.cells.times()) {
            earliest = time > firstTime ? std::min(earliest, time) : earliest;
        }
    }
    earliest = -ranks.maximum(-earliest);
    if (firstTime > 0.0) {
        return firstTime;
    }
    return 1e-6 * (earliest < none ? earliest : 1.0);
}

void addUp(Ranks& ranks, SeriesFill& fill) {
    for (std::int64_t* count :
         {&fill.cells, &fill.filled, &fill.never, &fill.atStart, &fill.emptied, &fill.noNumber}) {
        *count = ranks.sum(*count);
    }
    fill.stepsWithout = ranks.maximum(fill.stepsWithout);
    const double earliest = -ranks.maximum(-fill.earliest);
    fill.earliest = fill.filled > 0 ? earliest : 0.0;
    fill.latest = ranks.maximum(fill.latest);
}

bool isWanted(Ranks& ranks, const PieceList& list, const OpenedDataSet& opened,
              const GridArrays& arrays, SeriesOptions::Use use) {
    const auto times = ranks.maximum(static_cast<std::int64_t>(opened.times.size()));
    if (use == SeriesOptions::Use::WhereNoFillTime) {
        return !hasFillTime(arrays) && times > 1 && !phaseFractions(arrays).empty();
    }
    agreeOnFailure(ranks, [&] {
        if (times < 2) {
            failOnInput(list.file, std::string("the data set holds ") +
                                       (times == 1 ? "one time only" : "no times") +
                                       "; a fill time needs a phase fraction at several times");
        }
    });
    return true;
}

}  // namespace

bool isPhaseFraction(const std::string& name, int components) {
    constexpr std::string_view start = "alpha";
    return components == 1 && name.size() >= start.size() &&
           std::equal(start.begin(), start.end(), name.begin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

std::optional<SeriesFill> deriveFillTime(Ranks& ranks, const PieceList& list,
                                         const std::vector<OwnPiece>& pieces,
                                         const OpenedDataSet& opened, std::optional<double> latest,
                                         const ReadOptions& options) {
    const SeriesOptions& series = options.series;
    if (series.use == SeriesOptions::Use::Never) {
        return std::nullopt;
    }
    std::vector<vtkDataSet*> grids;
    for (const Block& block : opened.volumes) {
        grids.push_back(block.grid);
    }
    const GridArrays arrays = arraysOfAll(ranks, arraysOf(grids));
    if (!isWanted(ranks, list, opened, arrays, series.use)) {
        return std::nullopt;
    }
    SeriesFill fill;
    fill.level = series.level;
    fill.field = together(ranks, [&] { return phaseFraction(list.file, arrays, series); });
    const std::vector<PieceSeries> own = together(ranks, [&] {
        return readOwnSeries(list, pieces, opened, {fill.field, latest, series});
    });
    checkTimes(ranks, list.file, fill.field, own, fill);
    const double startTime = startTimeOf(ranks, own, fill.firstTime);
    fill.earliest = none;
    for (const PieceSeries& piece : own) {
        fill.stepsWithout = std::max(fill.stepsWithout, piece.without);
        PieceResult result(piece.cells, startTime, fill);
        for (vtkDataSet* grid : piece.grids) {
            result.addTo(grid);
        }
    }
    addUp(ranks, fill);
    agreeOnFailure(ranks, [&] {
        if (fill.filled == 0) {
            failOnInput(list.file, "no cell of '" + fill.field + "' reaches " +
                                       shortNumber(fill.level) + " at any time");
        }
    });
    return fill;
}

}  // namespace weldline
