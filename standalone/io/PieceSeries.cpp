#include "PieceSeries.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>

#include <utility>

#include "TimeReader.h"
#include "base/Errors.h"
#include "base/ShortNumber.h"

namespace weldline {
namespace {

std::vector<double> valuesOf(const std::vector<Block>& volumes, const std::string& field) {
    std::vector<double> values;
    for (const Block& block : volumes) {
        vtkDataArray* array = block.grid->GetCellData()->GetArray(field.c_str());
        const vtkIdType count = array == nullptr ? 0 : array->GetNumberOfTuples();
        values.reserve(values.size() + static_cast<std::size_t>(count));
        for (vtkIdType c = 0; c < count; ++c) {
            values.push_back(array->GetComponent(c, 0));
        }
    }
    return values;
}

void tell(const SeriesRequest& request, std::size_t step, std::size_t steps) {
    if (request.options.progress) {
        request.options.progress("fill time from '" + request.field + "': time " +
                                 std::to_string(step) + " of " + std::to_string(steps));
    }
}

// What FillTimeSeries finds wrong is told without the file's name.
void addStep(const std::string& file, double time, std::vector<double> values,
             FillTimeSeries& cells) {
    try {
        cells.add(time, std::move(values));
    } catch (const InputError& error) {
        failOnInput(file, error.what());
    }
}

void checkCells(const std::string& file, std::size_t values, std::size_t cells, double time) {
    if (values != cells) {
        failOnInput(file, "the number of cells changes: " + std::to_string(values) + " at time " +
                              shortNumber(time) + " and " + std::to_string(cells) +
                              " in the mesh; a fill time needs the same mesh at all times");
    }
}

// One step of the array is in memory beside the one that FillTimeSeries keeps.
void readSteps(const std::string& file, TimeReader& reader, std::size_t cellCount,
               const SeriesRequest& request, PieceSeries& series) {
    reader.readOnly(request.field);
    std::size_t step = 0;
    for (const double time : reader.times()) {
        if (request.latest && time > *request.latest) {
            break;
        }
        tell(request, ++step, reader.times().size());
        std::vector<double> values;
        {
            OpenedDataSet opened;
            reader.read(time, opened);
            values = valuesOf(opened.volumes, request.field);
        }
        if (values.empty()) {
            ++series.without;
            continue;
        }
        checkCells(file, values.size(), cellCount, time);
        addStep(file, time, std::move(values), series.cells);
        series.times.push_back(time);
    }
}

}  // namespace

std::vector<PieceSeries> readOwnSeries(const PieceList& list, const std::vector<OwnPiece>& pieces,
                                       const OpenedDataSet& opened, const SeriesRequest& request) {
    std::vector<PieceSeries> own;
    auto volume = opened.volumes.begin();
    for (const OwnPiece& piece : pieces) {
        PieceSeries series{FillTimeSeries(request.options.level), {}, 0, {}};
        std::size_t cells = 0;
        for (std::size_t v = 0; v < piece.volumes; ++v, ++volume) {
            series.grids.push_back(volume->grid);
            cells += static_cast<std::size_t>(volume->grid->GetNumberOfCells());
        }
        const auto reader = openTimes(list, list.pieces[piece.piece]);
        if (cells > 0 && reader != nullptr) {
            readSteps(list.file, *reader, cells, request, series);
            own.push_back(std::move(series));
        }
    }
    return own;
}

}  // namespace weldline
