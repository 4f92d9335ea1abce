#include "DataSet.h"

#include <iterator>

#include "comm/OneRank.h"

namespace weldline {

DataSet readDataSet(const std::string& file, const ReadOptions& options) {
    OneRank alone;
    DataPart whole = readPart(alone, file, options);
    DataSet data;
    data.file = file;
    data.mesh = std::move(whole.part.mesh);
    data.patches = std::move(whole.part.patches);
    data.fieldName = std::move(whole.fieldName);
    auto& fields = whole.part.cellFields;
    data.fillTime = std::move(fields.front());
    data.carried.assign(std::make_move_iterator(fields.end() - std::ssize(options.carried)),
                        std::make_move_iterator(fields.end()));
    data.pointFields = std::move(whole.pointFields);
    data.notes = std::move(whole.notes);
    data.time = whole.time;
    data.series = std::move(whole.series);
    data.remarks = std::move(whole.remarks);
    return data;
}

}  // namespace weldline
