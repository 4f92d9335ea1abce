// OpenFOAM cases, written out by the test.
#include "FoamText.h"
#include "IoFiles.h"
#include "MeshParts.h"
#include "mesh/BoundaryGroups.h"
#include "mesh/FvMesh.h"

namespace weldline::test {
namespace {

class ReadFoam : public FileTest {
  protected:
    void SetUp() override {
        FileTest::SetUp();
        const auto putFile = [&](const std::string& name, const std::string& text) {
            put(name, text);
        };
        putFoamControl(putFile);
        putFoamMesh(putFile);
        putField("1", "fillTime", "0.25 0");
        putField("2", "fillTime", "0.25 1.5");
        case_ = put("case.foam", "");
    }

    void putField(const std::string& time, const std::string& name,
                  const std::string& values) const {
        put(time + "/" + name, foamField(name, values));
    }

    std::string case_;
};

TEST_F(ReadFoam, meshFieldAndPatches) {
    const DataSet data = readDataSet(case_, {});
    EXPECT_EQ(data.fieldName, "fillTime");
    EXPECT_EQ(data.fillTime, (std::vector<double>{0.25, 1.5}));
    EXPECT_EQ(data.time, 2.0);
    EXPECT_TRUE(data.remarks.empty());
    const FvMesh mesh = buildFvMesh(data.mesh);
    EXPECT_EQ(mesh.cellCount(), 2);
    EXPECT_EQ(mesh.innerFaces, 1);
    EXPECT_DOUBLE_EQ(mesh.cellVolume[1], 1.0);
    const BoundaryGroups groups = groupBoundaryFaces(mesh, data.patches, GroupPatterns{});
    ASSERT_EQ(groups.patches.size(), 3U);
    EXPECT_EQ(groups.patches[0].name, "gate");
    EXPECT_EQ(groups.patches[0].kind, GroupKind::Inlet);
    EXPECT_EQ(groups.patches[0].faces, 1);
    EXPECT_EQ(groups.patches[1].name, "vent");
    EXPECT_EQ(groups.patches[1].kind, GroupKind::Outlet);
    EXPECT_EQ(groups.patches[2].name, "walls");
    EXPECT_EQ(groups.patches[2].faces, 8);
}

TEST_F(ReadFoam, timeByValue) {
    ReadOptions options;
    options.time = "1";
    const DataSet data = readDataSet(case_, options);
    EXPECT_EQ(data.time, 1.0);
    EXPECT_EQ(data.fillTime, (std::vector<double>{0.25, 0}));
    options.time = "1.0000001";
    EXPECT_EQ(readDataSet(case_, options).time, 1.0);
    options.time = "1.4";
    EXPECT_EQ(readError(case_, options),
              "'" + case_ + "': there is no time 1.4; of 2 times the nearest is 1");
}

TEST_F(ReadFoam, timeZeroIsATime) {
    putField("0", "fillTime", "0 0");
    ReadOptions options;
    options.time = "0";
    EXPECT_EQ(readDataSet(case_, options).time, 0.0);
}

TEST_F(ReadFoam, missingField) {
    std::filesystem::remove(path("2/fillTime"));
    putField("2", "alpha", "1 0.5");
    EXPECT_EQ(readError(case_), "'" + case_ +
                                    "': there is no cell array 'FillTime'; name the fill time "
                                    "among the cell arrays 'alpha'");
}

TEST_F(ReadFoam, fieldWithTooFewValues) {
    putField("2", "fillTime", "0.25");
    EXPECT_NE(readError(case_), "");
}

TEST_F(ReadFoam, noCaseAround) {
    const std::string file = put("empty/case.foam", "");
    EXPECT_EQ(readError(file), "'" + file +
                                   "': its folder holds no OpenFOAM case ('constant/polyMesh' and "
                                   "'system/controlDict' are needed)");
}

TEST_F(ReadFoam, missingMeshFiles) {
    for (const char* name : {"points", "faces", "owner", "boundary"}) {
        const std::string file = path(std::string("constant/polyMesh/") + name);
        std::filesystem::rename(file, file + ".away");
        EXPECT_NE(readError(case_), "") << name;
        std::filesystem::rename(file + ".away", file);
    }
    std::filesystem::remove(path("system/controlDict"));
    EXPECT_EQ(readError(case_), "'" + case_ + "': the OpenFOAM case has no 'system/controlDict'");
}

TEST_F(ReadFoam, truncatedMeshFiles) {
    for (const char* name : {"points", "faces", "owner", "neighbour", "boundary"}) {
        const std::string file = std::string("constant/polyMesh/") + name;
        const std::string whole = contentOf(path(file));
        put(file, whole.substr(0, whole.size() / 2));
        EXPECT_NE(readError(case_), "") << name;
        put(file, whole);
    }
    EXPECT_EQ(readError(case_), "");
}

}  // namespace
}  // namespace weldline::test
