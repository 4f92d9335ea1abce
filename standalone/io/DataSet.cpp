#include "DataSet.h"

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
    data.fillTime = std::move(whole.part.cellFields.front());
    data.time = whole.time;
    data.remarks = std::move(whole.remarks);
    return data;
}

}  // namespace weldline
