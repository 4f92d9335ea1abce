// An EnSight case that another program has written: foamToEnsight of OpenFOAM 1912, from four unit
// cubes in a row along x with the patches gate, vent and sides and a phase fraction at four times.
#include "IoFiles.h"
#include "IoSeries.h"

namespace weldline::test {
namespace {

//   time   0    1     2     4
//          0    1     1     1
//          0    0.25  0.75  1
//          0    0     0     1
//          0    0     0     0.25
TEST(ReadEnSight, case_of_openfoam) {
    const std::string file = WELDLINE_ENSIGHT_FILES "/row.case";
    const DataSet data = readDataSet(file, fromSeries());
    EXPECT_EQ(data.series->field, "alphamelt");
    EXPECT_EQ(data.series->largestStep, 2.0);
    expectTimes(data.fillTime, {0.5, 1.5, 3.0, std::nan("")});
    ASSERT_EQ(data.patches.size(), 3U);
    EXPECT_EQ(data.patches[0].name, "gate");
    EXPECT_EQ(data.patches[0].faces.count(), 1);
    for (const int node : data.patches[0].faces[0]) EXPECT_EQ(data.mesh.points[node].x, 0.0);
    EXPECT_EQ(data.patches[1].name, "vent");
    EXPECT_EQ(data.patches[2].name, "sides");
    EXPECT_EQ(data.patches[2].faces.count(), 16);
}

TEST(ReadEnSight, field_at_a_time) {
    ReadOptions options;
    options.field = "alphamelt";
    options.fieldGiven = true;
    options.time = "2";
    EXPECT_EQ(readDataSet(WELDLINE_ENSIGHT_FILES "/row.case", options).fillTime,
              (std::vector<double>{1.0, 0.75, 0.0, 0.0}));
}

}  // namespace
}  // namespace weldline::test
