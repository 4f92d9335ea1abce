#include "ResultFile.h"

#include <gtest/gtest.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridReader.h>

namespace weldline::test {

namespace {

template <class Value>
std::vector<Value> valuesOf(vtkDataArray* array) {
    std::vector<Value> values;
    for (vtkIdType i = 0; array != nullptr && i < array->GetNumberOfTuples(); ++i)
        for (int c = 0; c < array->GetNumberOfComponents(); ++c)
            values.push_back(static_cast<Value>(array->GetComponent(i, c)));
    return values;
}

}  // namespace

ResultFile readResultFile(const std::string& file) {
    vtkNew<vtkXMLUnstructuredGridReader> reader;
    reader->SetFileName(file.c_str());
    reader->Update();
    vtkUnstructuredGrid* grid = reader->GetOutput();
    ResultFile result;
    result.coordinates = valuesOf<double>(grid->GetPoints()->GetData());
    result.cellNodes = valuesOf<long long>(grid->GetCells()->GetConnectivityArray());
    result.angle = valuesOf<double>(grid->GetPointData()->GetArray("MeetingAngle"));
    result.weldLine = valuesOf<int>(grid->GetPointData()->GetArray("WeldLine"));
    result.fillTime = valuesOf<float>(grid->GetCellData()->GetArray("FillTime"));
    return result;
}

void addPoints(const ResultFile& file, PointResults& points) {
    ASSERT_EQ(file.coordinates.size(), 3 * file.angle.size());
    for (std::size_t p = 0; p < file.angle.size(); ++p) {
        const std::array place{file.coordinates[3 * p], file.coordinates[3 * p + 1],
                               file.coordinates[3 * p + 2]};
        const PointResult own{file.angle[p], file.weldLine[p]};
        const auto [known, isNew] = points.emplace(place, own);
        if (isNew) continue;
        EXPECT_EQ(known->second.angle, own.angle);
        EXPECT_EQ(known->second.weldLine, own.weldLine);
    }
}

}  // namespace weldline::test
