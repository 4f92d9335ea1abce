// Fill times from phase fractions over time, in the forms in which solvers write them.
#include <limits>

#include "IoFiles.h"
#include "IoSeries.h"
#include "MeshParts.h"
#include "base/Errors.h"
#include "io/WriteFillTime.h"

namespace weldline::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class ReadSeries : public FileTest {
  protected:
    // Two boxes, with a quad with a patch number in front of them.
    static GridText grid(const std::string& alpha, const std::string& name = "alpha.melt") {
        GridText text;
        text.points = boxRowPoints({0, 1, 2});
        text.cell(Quad, {0, 1, 3, 2});
        text.cell(Hexa, {0, 4, 5, 1, 2, 6, 7, 3}).cell(Hexa, {4, 8, 9, 5, 6, 10, 11, 7});
        text.cellArray(name, "9 " + alpha, "Float64").cellArray("PatchId", "5 0 0", "Int32");
        return text;
    }

    std::string collection(const std::string& entries) const {
        return put("run.pvd",
                   "<?xml version=\"1.0\"?>\n<VTKFile type=\"Collection\" version=\"0.1\">\n"
                   "<Collection>\n" +
                       entries + "</Collection>\n</VTKFile>\n");
    }

    static std::string entry(const std::string& time, const std::string& file) {
        return "<DataSet timestep=\"" + time + "\" part=\"0\" file=\"" + file + "\"/>\n";
    }

    // At 0, 1 and 2; listed out of order.
    std::string threeTimes() const {
        put("a.vtu", grid("0 0").vtu());
        put("b.vtu", grid("1 0.25").vtu());
        put("c.vtu", grid("0.25 0.75").vtu());
        return collection(entry("2", "c.vtu") + entry("0", "a.vtu") + entry("1.0", "b.vtu"));
    }
};

TEST_F(ReadSeries, collection_of_grids) {
    const DataSet data = readDataSet(threeTimes(), fromSeries());
    expectTimes(data.fillTime, {0.5, 1.5});
    EXPECT_EQ(data.fieldName, "FillTime");
    EXPECT_EQ(data.time, 2.0);
    ASSERT_TRUE(data.series.has_value());
    EXPECT_EQ(data.series->field, "alpha.melt");
    EXPECT_EQ(data.series->steps, 3);
    EXPECT_EQ(data.series->firstTime, 0.0);
    EXPECT_EQ(data.series->lastTime, 2.0);
    EXPECT_EQ(data.series->largestStep, 1.0);
    EXPECT_EQ(data.series->cells, 2);
    EXPECT_EQ(data.series->filled, 2);
    EXPECT_EQ(data.series->never, 0);
    EXPECT_EQ(data.series->emptied, 1);
    EXPECT_EQ(data.series->atStart, 0);
    EXPECT_EQ(data.series->earliest, 0.5);
    EXPECT_EQ(data.series->latest, 1.5);
}

TEST_F(ReadSeries, level) {
    ReadOptions options = fromSeries();
    options.series.level = 0.75;
    expectTimes(readDataSet(threeTimes(), options).fillTime, {0.75, 2.0});
}

TEST_F(ReadSeries, times_after_the_chosen_one_do_not_count) {
    ReadOptions options = fromSeries();
    options.time = "1";
    const DataSet data = readDataSet(threeTimes(), options);
    expectTimes(data.fillTime, {0.5, nan});
    EXPECT_EQ(data.series->steps, 2);
    EXPECT_EQ(data.series->never, 1);
}

TEST_F(ReadSeries, steps_are_told) {
    std::vector<std::string> told;
    ReadOptions options = fromSeries();
    options.series.progress = [&](const std::string& text) { told.push_back(text); };
    readDataSet(threeTimes(), options);
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told[1], "fill time from 'alpha.melt': time 2 of 3");
}

// 0.5 is the earliest time after the start: a millionth of it.
TEST_F(ReadSeries, full_at_time_zero_gets_a_small_positive_time) {
    put("a.vtu", grid("1 0").vtu());
    put("b.vtu", grid("1 1").vtu());
    const DataSet data =
        readDataSet(collection(entry("0", "a.vtu") + entry("1", "b.vtu")), fromSeries());
    expectTimes(data.fillTime, {0.5e-6, 0.5});
    EXPECT_EQ(data.series->atStart, 1);
}

TEST_F(ReadSeries, full_at_a_later_first_time_gets_that_time) {
    put("a.vtu", grid("1 0").vtu());
    put("b.vtu", grid("1 1").vtu());
    const DataSet data =
        readDataSet(collection(entry("3", "a.vtu") + entry("5", "b.vtu")), fromSeries());
    expectTimes(data.fillTime, {3.0, 4.0});
}

TEST_F(ReadSeries, fields_of_pieces_in_one_file_and_in_several) {
    put("a.vtu", vtuOfPieces({grid("0 0"), grid("0 1")}));
    put("b0.vtu", grid("1 0.5").vtu());
    put("b1.vtu", grid("0 1").vtu());
    const DataSet data =
        readDataSet(collection(entry("0", "a.vtu") + entry("1", "b0.vtu") + entry("1", "b1.vtu")),
                    fromSeries());
    expectTimes(data.fillTime, {0.5, 1.0, nan, 0.5e-6});
}

TEST_F(ReadSeries, only_where_there_is_no_fill_time) {
    ReadOptions options;
    options.series.use = SeriesOptions::Use::WhereNoFillTime;
    expectTimes(readDataSet(threeTimes(), options).fillTime, {0.5, 1.5});
    for (const char* file : {"a.vtu", "b.vtu", "c.vtu"}) {
        put(file, grid("0 1").cellArray("FillTime", "0 7 8").vtu());
    }
    const DataSet data = readDataSet(path("run.pvd"), options);
    expectTimes(data.fillTime, {7.0, 8.0});
    EXPECT_FALSE(data.series.has_value());
}

TEST_F(ReadSeries, field_missing) {
    EXPECT_EQ(readError(threeTimes(), fromSeries("beta")),
              "'" + path("run.pvd") +
                  "': there is no cell array 'beta'; name the phase fraction among the cell arrays "
                  "'PatchId', 'alpha.melt'");
    put("c.vtu", grid("0 1", "beta").vtu());
    EXPECT_EQ(readError(path("run.pvd"), fromSeries()),
              "'" + path("run.pvd") +
                  "': no cell array is named alpha...; name the phase fraction with --field; there "
                  "are 'PatchId', 'beta'");
}

TEST_F(ReadSeries, several_fields) {
    const std::string file = threeTimes();
    put("c.vtu", grid("0.25 0.75").cellArray("alpha.air", "0 0 0").vtu());
    EXPECT_EQ(readError(file, fromSeries()),
              "'" + file +
                  "': several cell arrays could be the phase fraction: 'alpha.air', 'alpha.melt'; "
                  "name one with 'weldline filltime --field'");
    expectTimes(readDataSet(file, fromSeries("alpha.melt")).fillTime, {0.5, 1.5});
}

TEST_F(ReadSeries, times_without_the_field_are_left_out) {
    const std::string file = threeTimes();
    put("a.vtu", grid("0 0", "beta").vtu());
    const DataSet data = readDataSet(file, fromSeries());
    EXPECT_EQ(data.series->stepsWithout, 1);
    expectTimes(data.fillTime, {1.0, 1.5});
    put("b.vtu", grid("0 0", "beta").vtu());
    EXPECT_EQ(
        readError(file, fromSeries()),
        "'" + file +
            "': 'alpha.melt' is there at one time only; a fill time needs it at several times "
            "of the filling");
}

TEST_F(ReadSeries, one_time_or_none) {
    const std::string one = put("one.vtu", grid("0 1").vtu());
    EXPECT_EQ(readError(one, fromSeries()),
              "'" + one +
                  "': the data set holds no times; a fill time needs a phase fraction at several "
                  "times");
    const std::string file = collection(entry("1", "one.vtu"));
    EXPECT_EQ(readError(file, fromSeries()),
              "'" + file +
                  "': the data set holds one time only; a fill time needs a phase fraction at "
                  "several times");
}

TEST_F(ReadSeries, cells_change_in_number) {
    const std::string file = threeTimes();
    put("b.vtu", vtuOfPieces({grid("0 0"), grid("0 0")}));
    EXPECT_EQ(
        readError(file, fromSeries()),
        "'" + file +
            "': the number of cells changes: 6 at time 1 and 3 in the mesh; a fill time needs "
            "the same mesh at all times");
}

TEST_F(ReadSeries, nothing_is_ever_full) {
    const std::string file = collection(entry("0", "a.vtu") + entry("1", "b.vtu"));
    put("a.vtu", grid("0 0").vtu());
    put("b.vtu", grid("0.25 0").vtu());
    EXPECT_EQ(readError(file, fromSeries()),
              "'" + file + "': no cell of 'alpha.melt' reaches 0.5 at any time");
}

TEST_F(ReadSeries, time_before_zero) {
    const std::string file = collection(entry("-1", "a.vtu") + entry("1", "b.vtu"));
    put("a.vtu", grid("0 0").vtu());
    put("b.vtu", grid("1 0").vtu());
    EXPECT_EQ(readError(file, fromSeries()),
              "'" + file + "': the first time is -1; a filling starts at time 0 or later");
}

TEST_F(ReadSeries, collection_that_is_none) {
    const std::string file = put("run.pvd", "<VTKFile/>");
    EXPECT_EQ(readError(file), "'" + file +
                                   "': the file names no data sets over time (no Collection with "
                                   "DataSets)");
    collection(entry("soon", "a.vtu"));
    EXPECT_EQ(readError(file),
              "'" + file + "': 'soon' is no time; every DataSet needs a timestep, a number");
    collection(entry("1", "a.stl"));
    EXPECT_EQ(readError(file),
              "'" + file + "': it names 'a.stl'; .vtu, .pvtu, .vtk and .vtm can be read");
    collection(entry("1", "gone.vtu"));
    EXPECT_EQ(readError(file), "'" + path("gone.vtu") + "': no such file");
}

TEST_F(ReadSeries, other_files_of_a_collection) {
    put("a.vtk", twoBoxes().cellArray("alpha", "0 0").legacy());
    put("b.vtk", twoBoxes().cellArray("alpha", "1 0.5").legacy());
    const std::string file = collection(entry("0", "a.vtk") + entry("1", "b.vtk"));
    expectTimes(readDataSet(file, fromSeries()).fillTime, {0.5, 1.0});
}

TEST_F(ReadSeries, fill_time_is_read_as_it_was_written) {
    const DataSet data = readDataSet(threeTimes(), fromSeries());
    const std::string file = path("out.vtu");
    std::vector<Patch> patches = data.patches;
    ASSERT_EQ(patches.size(), 1U);
    EXPECT_EQ(patches[0].name, "5");
    patches[0].name = "gate of steel";
    writeFillTime(file, data.mesh, patches, {1.5, nan});
    const DataSet again = readDataSet(file, {});
    expectTimes(again.fillTime, {1.5, nan});
    ASSERT_EQ(again.patches.size(), 1U);
    EXPECT_EQ(again.patches[0].name, "gate of steel");
    ASSERT_EQ(again.patches[0].faces.count(), 1);
    EXPECT_EQ(rowOf(again.patches[0].faces, 0), rowOf(patches[0].faces, 0));
    EXPECT_EQ(describeDataSet(file, "latest").patches.front().name, "gate of steel");
}

}  // namespace
}  // namespace weldline::test
