// Fill times from cases of OpenFOAM, EnSight and Exodus.
#include <vtkCellData.h>
#include <vtkExodusIIWriter.h>
#include <vtkFloatArray.h>
#include <vtkInformation.h>
#include <vtkInformationDoubleKey.h>
#include <vtkInformationVector.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkStreamingDemandDrivenPipeline.h>
#include <vtkUnstructuredGrid.h>
#include <vtkUnstructuredGridAlgorithm.h>

#include <array>
#include <sstream>

#include "FoamText.h"
#include "IoFiles.h"
#include "IoSeries.h"
#include "MeshParts.h"

namespace weldline::test {
namespace {

class ReadFoamSeries : public FileTest {
  protected:
    // A case, or what one process has of it, in a folder that ends in "/".
    void putMesh(const std::string& folder, double start) const {
        putFoamMesh(
            [&](const std::string& name, const std::string& text) { put(folder + name, text); },
            start);
    }

    void SetUp() override {
        FileTest::SetUp();
        putFoamControl([&](const std::string& name, const std::string& text) { put(name, text); });
    }

    void putAlpha(const std::string& folder, const std::string& time,
                  const std::string& values) const {
        put(folder + time + "/alpha.melt", foamField("alpha.melt", values));
    }
};

TEST_F(ReadFoamSeries, case_by_its_folder) {
    putMesh("", 0.0);
    putAlpha("", "0", "0 0");
    putAlpha("", "0.5", "1 0.25");
    putAlpha("", "2", "1 0.75");
    const DataSet data = readDataSet(foamFileOf(folder_.string()), fromSeries());
    expectTimes(data.fillTime, {0.25, 1.25});
    EXPECT_EQ(data.series->largestStep, 1.5);
    ASSERT_EQ(data.patches.size(), 3U);
    EXPECT_EQ(data.patches[0].name, "gate");
}

TEST_F(ReadFoamSeries, marker_of_the_case_is_found) {
    EXPECT_EQ(foamFileOf(folder_.string()), (folder_ / folder_.filename()).string() + ".foam");
    EXPECT_EQ(foamFileOf(folder_.string() + "/"),
              (folder_ / folder_.filename()).string() + ".foam");
    const std::string marker = put("plate.foam", "");
    EXPECT_EQ(foamFileOf(folder_.string()), marker);
    EXPECT_EQ(foamFileOf(path("system")), path("system"));
    EXPECT_EQ(foamFileOf(marker), marker);
}

TEST_F(ReadFoamSeries, decomposed_case) {
    const std::string file = put("case.foam", "");
    putMesh("processor0/", 0.0);
    putMesh("processor1/", 2.0);
    putAlpha("processor0/", "0", "0 0");
    putAlpha("processor0/", "1", "1 0.5");
    putAlpha("processor1/", "0", "0 1");
    putAlpha("processor1/", "1", "0.25 1");
    const DataSet data = readDataSet(file, fromSeries());
    expectTimes(data.fillTime, {0.5, 1.0, std::nan(""), 0.5e-6});
    EXPECT_EQ(data.series->cells, 4);
    EXPECT_EQ(data.series->filled, 3);
    EXPECT_EQ(data.series->atStart, 1);
    putAlpha("processor0/", "0.5", "0 0");
    EXPECT_EQ(readError(file, fromSeries()),
              "'" + file +
                  "': its parts hold 'alpha.melt' at different times; a fill time needs all parts "
                  "at all times");
}

// Two boxes with the values of one step in a file each.
class ReadEnSightSeries : public FileTest {
  protected:
    void putStep(int step, const std::string& values) const {
        put("run.alpha.000" + std::to_string(step),
            "phase fraction\npart\n         1\nhexa8\n" + values);
    }

    std::string putCase() const {
        std::ostringstream geometry;
        geometry << "two boxes\nin a row\nnode id off\nelement id off\npart\n         1\nmelt\n"
                    "coordinates\n        12\n";
        const std::vector<Vec3> points = boxRowPoints({0, 1, 2});
        geometry << std::scientific;
        geometry.precision(5);
        const auto column = [&](double Vec3::*component) {
            for (const Vec3& p : points) {
                geometry << ' ' << p.*component << '\n';
            }
        };
        column(&Vec3::x);
        column(&Vec3::y);
        column(&Vec3::z);
        geometry << "hexa8\n         2\n";
        for (const auto& cell :
             {std::array{1, 5, 6, 2, 3, 7, 8, 4}, std::array{5, 9, 10, 6, 7, 11, 12, 8}}) {
            for (const int node : cell) {
                geometry.width(10);
                geometry << node;
            }
            geometry << '\n';
        }
        put("run.geo", geometry.str());
        return put("run.case",
                   "FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: run.geo\nVARIABLE\n"
                   "scalar per element: 1 alpha run.alpha.****\nTIME\ntime set: 1\n"
                   "number of steps: 3\nfilename start number: 0\nfilename increment: 1\n"
                   "time values: 0.0 1.0 3.0\n");
    }
};

TEST_F(ReadEnSightSeries, values_per_element) {
    putStep(0, " 0.00000e+00\n 0.00000e+00\n");
    putStep(1, " 1.00000e+00\n 2.50000e-01\n");
    putStep(2, " 1.00000e+00\n 7.50000e-01\n");
    const DataSet data = readDataSet(putCase(), fromSeries());
    expectTimes(data.fillTime, {0.5, 2.0});
    EXPECT_EQ(data.mesh.cellCount(), 2);
    EXPECT_EQ(data.series->largestStep, 2.0);
}

TEST_F(ReadEnSightSeries, file_that_is_none) {
    EXPECT_NE(readError(put("run.case", "FORMAT\n")), "");
    EXPECT_NE(readError(put("run.case", "")), "");
}

// Two boxes at the times 0, 1, 2 with values 0, 1/4, 3/4 and 0, 0, 1.
class BoxesOverTime : public vtkUnstructuredGridAlgorithm {
  public:
    static BoxesOverTime* New() {
        auto* source = new BoxesOverTime;
        source->InitializeObjectBase();
        return source;
    }

  protected:
    BoxesOverTime() { SetNumberOfInputPorts(0); }

    int RequestInformation(vtkInformation* /*request*/, vtkInformationVector** /*inputs*/,
                           vtkInformationVector* outputs) override {
        const std::array<double, 3> times{0.0, 1.0, 2.0};
        const std::array<double, 2> range{0.0, 2.0};
        vtkInformation* info = outputs->GetInformationObject(0);
        info->Set(vtkStreamingDemandDrivenPipeline::TIME_STEPS(), times.data(), 3);
        info->Set(vtkStreamingDemandDrivenPipeline::TIME_RANGE(), range.data(), 2);
        return 1;
    }

    int RequestData(vtkInformation* /*request*/, vtkInformationVector** /*inputs*/,
                    vtkInformationVector* outputs) override {
        vtkInformation* info = outputs->GetInformationObject(0);
        vtkInformationDoubleKey* key = vtkStreamingDemandDrivenPipeline::UPDATE_TIME_STEP();
        const double time = info->Has(key) != 0 ? info->Get(key) : 0.0;
        auto* grid = vtkUnstructuredGrid::GetData(outputs);
        vtkNew<vtkPoints> points;
        for (const Vec3 p : boxRowPoints({0, 1, 2})) {
            points->InsertNextPoint(p.x, p.y, p.z);
        }
        grid->SetPoints(points);
        grid->AllocateExact(2, 16);
        const std::array<vtkIdType, 8> first{0, 4, 5, 1, 2, 6, 7, 3};
        const std::array<vtkIdType, 8> second{4, 8, 9, 5, 6, 10, 11, 7};
        grid->InsertNextCell(Hexa, 8, first.data());
        grid->InsertNextCell(Hexa, 8, second.data());
        vtkNew<vtkFloatArray> alpha;
        alpha->SetName("alpha");
        alpha->InsertNextValue(time == 0.0 ? 0.0F : (time == 1.0 ? 0.25F : 0.75F));
        alpha->InsertNextValue(time == 2.0 ? 1.0F : 0.0F);
        grid->GetCellData()->AddArray(alpha);
        grid->GetInformation()->Set(vtkDataObject::DATA_TIME_STEP(), time);
        return 1;
    }
};

using ReadExodusSeries = FileTest;

TEST_F(ReadExodusSeries, values_per_element) {
    const std::string file = path("run.exo");
    vtkNew<BoxesOverTime> boxes;
    vtkNew<vtkExodusIIWriter> writer;
    writer->SetInputConnection(boxes->GetOutputPort());
    writer->SetFileName(file.c_str());
    writer->WriteAllTimeStepsOn();
    writer->Write();
    const DataSet data = readDataSet(file, fromSeries());
    expectTimes(data.fillTime, {1.5, 1.5});
    EXPECT_EQ(data.series->field, "alpha");
    EXPECT_EQ(data.series->steps, 3);
    EXPECT_NE(readError(put("other.exo", "no mesh at all")), "");
}

}  // namespace
}  // namespace weldline::test
