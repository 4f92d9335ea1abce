// Ranks: 1 2 3 4 8, as processes that the tests start.

#include <cmath>

#include "ProgramMpiTest.h"
#include "ResultFile.h"

// The program on several ranks gives the results of one process.

namespace weldline::test {

namespace {

class MpiRuns : public MpiProgramTest {};

void expectNear(const nlohmann::json& one, const nlohmann::json& other) {
    EXPECT_NEAR(one.get<double>(), other.get<double>(), 1e-9 * (1.0 + std::abs(one.get<double>())));
}

// Same places and lines, angles to rounding. In exact head-on meetings rounding of the cosine
// shows as its square root.
void expectSameResult(const PointResults& one, const PointResults& other) {
    ASSERT_EQ(one.size(), other.size());
    for (auto a = one.begin(), b = other.begin(); a != one.end(); ++a, ++b) {
        ASSERT_EQ(a->first, b->first);
        EXPECT_EQ(a->second.weldLine, b->second.weldLine);
        EXPECT_NEAR(a->second.angle, b->second.angle, 2e-6);
    }
}

// Without smoothing of gradients, in which cells without flow count otherwise beside another rank.
TEST_F(MpiRuns, summaries_do_not_depend_on_the_number_of_ranks) {
    const Names options{"--set", "nSmooth_afterGrad=0"};
    for (const int pieces : {3, 5}) {
        putForms(pieces);
        for (const std::string form : formNames()) {
            SCOPED_TRACE(form + " in " + std::to_string(pieces) + " pieces");
            const Json alone = summaryOf(0, at(form), options);
            EXPECT_EQ(alone["ranks"], 1);
            ASSERT_GE(alone["components"].size(), 2U);
            EXPECT_EQ(alone["components"][0]["nodes"], alone["components"][1]["nodes"]);
            for (const int ranks : pieces == 3 ? std::vector{1, 2, 4} : std::vector{3, 8}) {
                const Json summary = summaryOf(ranks, at(form), options);
                EXPECT_EQ(summary["ranks"], ranks);
                EXPECT_EQ(comparable(summary), comparable(alone));
                expectNear(summary["mesh"]["volume"], alone["mesh"]["volume"]);
                for (std::size_t i = 0; i < alone["components"].size(); ++i)
                    expectNear(summary["components"][i]["meanAngle"],
                               alone["components"][i]["meanAngle"]);
            }
        }
    }
}

// Patterns that match no name: inlets and outlets come from the fill time.
TEST_F(MpiRuns, found_groups_do_not_depend_on_the_number_of_ranks) {
    const Names options{"--auto-groups",      "--inlet", "none", "--outlet", "none", "--set",
                        "nSmooth_afterGrad=0"};
    putForms(3);
    for (const std::string form : formNames()) {
        SCOPED_TRACE(form);
        const Json alone = summaryOf(0, at(form), options);
        EXPECT_GT(alone["mesh"]["groups"]["inlet"], 0);
        for (const int ranks : {2, 4}) {
            const Json summary = summaryOf(ranks, at(form), options);
            EXPECT_EQ(comparable(summary), comparable(alone));
            EXPECT_EQ(summary["mesh"]["patches"], alone["mesh"]["patches"]);
            EXPECT_EQ(summary["remarks"], alone["remarks"]);
        }
    }
}

TEST_F(MpiRuns, one_file_holds_cells_and_points_in_their_order) {
    putForms(3);
    ASSERT_EQ(weldline({"analyze", at("pieces.pvtu"), "-o", at("alone.vtu")}).exitCode, 0);
    const ResultFile alone = readResultFile(at("alone.vtu"));
    for (const int ranks : {2, 5}) {
        ASSERT_EQ(onRanks(ranks, {"analyze", at("pieces.pvtu"), "-o", at("all.vtu")}).exitCode, 0);
        const ResultFile all = readResultFile(at("all.vtu"));
        EXPECT_EQ(all.coordinates, alone.coordinates);
        EXPECT_EQ(all.cellNodes, alone.cellNodes);
        EXPECT_EQ(all.fillTime, alone.fillTime);
        EXPECT_EQ(all.weldLine, alone.weldLine);
    }
}

TEST_F(MpiRuns, exodus_result_holds_the_whole) {
    putForms(3);
    ASSERT_EQ(weldline({"analyze", at("pieces.pvtu"), "-o", at("alone.exo")}).exitCode, 0);
    ASSERT_EQ(onRanks(3, {"analyze", at("pieces.pvtu"), "-o", at("all.exo")}).exitCode, 0);
    const auto infoOf = [&](const std::string& name) {
        return Json::parse(weldline({"info", at(name), "--json", "-"}).out);
    };
    const Json alone = infoOf("alone.exo");
    const Json all = infoOf("all.exo");
    EXPECT_EQ(all["cells"], alone["cells"]);
    EXPECT_EQ(all["points"], alone["points"]);
    ASSERT_EQ(all["arrays"].size(), alone["arrays"].size());
    for (std::size_t a = 0; a < alone["arrays"].size(); ++a) {
        EXPECT_EQ(all["arrays"][a]["name"], alone["arrays"][a]["name"]);
        for (const char* end : {"minimum", "maximum"})
            EXPECT_NEAR(all["arrays"][a][end], alone["arrays"][a][end].get<double>(), 2e-6);
    }
}

TEST_F(MpiRuns, pieces_join_to_the_one_file) {
    putForms(3);
    ASSERT_EQ(weldline({"analyze", at("case/case.foam"), "-o", at("alone.vtu")}).exitCode, 0);
    for (const int ranks : {1, 2, 4}) {
        ASSERT_EQ(onRanks(ranks, {"analyze", at("case/case.foam"), "-o", at("all.pvtu")}).exitCode,
                  0);
        Names pieces = filesOf("all_");
        EXPECT_EQ(static_cast<int>(pieces.size()), ranks);
        PointResults joined;
        std::size_t cells = 0;
        for (const std::string& piece : pieces) {
            const ResultFile part = readResultFile(at(piece));
            cells += part.fillTime.size();
            addPoints(part, joined);
        }
        const ResultFile alone = readResultFile(at("alone.vtu"));
        EXPECT_EQ(cells, alone.fillTime.size());
        PointResults whole;
        addPoints(alone, whole);
        expectSameResult(whole, joined);
        // The program reads what it wrote.
        EXPECT_EQ(summaryOf(0, at("all.pvtu"))["mesh"]["nodes"], whole.size());
    }
}

TEST_F(MpiRuns, one_process_writes_one_piece) {
    putForms(2);
    ASSERT_EQ(weldline({"analyze", at("whole.vtu"), "-o", at("r.pvtu")}).exitCode, 0);
    const Names first = filesOf("r");
    EXPECT_EQ(first.size(), 3U);  // r.cmp, r.pvtu and one piece
    ASSERT_EQ(weldline({"analyze", at("whole.vtu"), "-o", at("r.pvtu")}).exitCode, 0);
    EXPECT_EQ(filesOf("r"), first);  // the same run gives the same files
}

TEST_F(MpiRuns, pieces_of_the_result_before_go) {
    putForms(2);
    ASSERT_EQ(onRanks(3, {"analyze", at("whole.vtu"), "-o", at("r.pvtu")}).exitCode, 0);
    const Names before = filesOf("r_");
    EXPECT_EQ(before.size(), 3U);
    write("r_notes_0.vtu", "mine");
    write("r_0123456789abcdef_x.vtu", "mine, too");
    ASSERT_EQ(onRanks(2, {"analyze", at("whole.vtu"), "-o", at("r.pvtu")}).exitCode, 0);
    const Names after = filesOf("r_");
    EXPECT_EQ(after.size(), 4U);
    for (const std::string& name : before)
        EXPECT_EQ(std::count(after.begin(), after.end(), name), 0) << name;
}

// Zeros at the inlet are filled cells on every rank that they lie on: the inlet is the end x = 0,
// and a tongue of zeros runs from there through the block.
TEST_F(MpiRuns, zeros_are_followed_from_rank_to_rank) {
    MeshPart whole = putForms(4);
    for (std::size_t c = 0; c < whole.cellFields[0].size(); ++c)
        whole.cellFields[0][c] = c % 36 < 12 ? 0.0 : whole.cellFields[0][c];
    std::vector<int> partOfCell(whole.cellFields[0].size());
    for (std::size_t c = 0; c < partOfCell.size(); ++c)
        partOfCell[c] = static_cast<int>(c % 12 / 3);
    const std::string file = InputForms(at(""), whole, partOfCell, 4).decomposedFoam();
    const Json alone = summaryOf(0, file);
    EXPECT_EQ(alone["counts"]["cellsFilledAtZero"], 36);
    EXPECT_EQ(comparable(summaryOf(4, file)), comparable(alone));
}

TEST_F(MpiRuns, second_injection_and_cell_state_are_spread_with_the_cells) {
    SampleMesh mesh = plate(12, 2, 2);
    addCellArray(mesh, "FillTime",
                 [](SampleMesh::Point p) { return p[0] < 0.5 ? p[0] + 0.1 : -1.0; });
    addCellArray(mesh, "Second",
                 [](SampleMesh::Point p) { return p[0] < 0.5 ? -1.0 : 1.1 - p[0]; });
    addCellArray(mesh, "State", [](SampleMesh::Point p) { return p[1] < 0.1 ? 1.0 : 0.0; });
    const std::string file = write("part.vtu", mesh);
    const Names options{"--bi-field", "Second", "--cell-state", "State"};
    const Json alone = summaryOf(0, file, options);
    EXPECT_EQ(alone["counts"]["reachedCells"], 48);
    for (const int ranks : {3, 8})
        EXPECT_EQ(comparable(summaryOf(ranks, file, options)), comparable(alone));
}

// Air stays round the middle plane, where the ranks meet.
TEST_F(MpiRuns, trapped_air_is_closed_across_the_ranks) {
    SampleMesh mesh = plateWithTwoFronts(20, 3, 3);
    for (int cell = 0; cell < static_cast<int>(mesh.cells.size()); ++cell)
        if (std::abs(middleOf(mesh, cell)[0] - 0.5) < 0.2) mesh.cellArrays[0].values[cell] = 0.0;
    const std::string file = write("part.vtu", mesh);
    const Names options{"--trapped-air", "close"};
    const Json alone = summaryOf(0, file, options);
    EXPECT_EQ(alone["counts"]["closedCells"], 72);
    EXPECT_EQ(alone["counts"]["unreachedCells"], 72);
    for (const int ranks : {2, 5, 8})
        EXPECT_EQ(comparable(summaryOf(ranks, file, options)), comparable(alone));
}

TEST_F(MpiRuns, more_ranks_than_cells) {
    SampleMesh mesh = plate(2, 1, 1);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point) { return 1.0; });
    const std::string file = write("part.vtu", mesh);
    EXPECT_EQ(comparable(summaryOf(4, file)), comparable(summaryOf(0, file)));
    EXPECT_EQ(onRanks(4, {"analyze", file, "-o", at("r.pvtu")}).exitCode, 0);
    EXPECT_EQ(summaryOf(0, at("r.pvtu"))["mesh"]["cells"], 2);
}

TEST_F(MpiRuns, trace_is_that_of_the_first_rank) {
    putForms(2);
    ASSERT_EQ(
        onRanks(2, {"analyze", at("whole.vtu"), "-o", at("r.vtu"), "--set", "FlagDebugOutput=1"})
            .exitCode,
        0);
    const std::string trace = read(at("r_KVRWDLineDebug.txt"));
    EXPECT_EQ(linesWith(trace, "calWeldLine: ~CKVR3DWeldLine...Done!!"), 1);
}

TEST_F(MpiRuns, only_the_first_rank_speaks) {
    const std::string file = write("part.vtu", plateWithTwoFronts(8, 2, 2));
    const Outcome alone = weldline({"analyze", file});
    const Outcome outcome = onRanks(3, {"analyze", file});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(linesWith(outcome.out, "Weld lines"), 1);
    EXPECT_EQ(ownLines(outcome), ownLines(alone));
    EXPECT_EQ(onRanks(3, {"--version"}).out, weldline({"--version"}).out);
    EXPECT_EQ(onRanks(3, {"settings"}).out, weldline({"settings"}).out);
    EXPECT_EQ(onRanks(3, {"info", file}).out, weldline({"info", file}).out);
    EXPECT_EQ(temporaries(), Names{});
}

}  // namespace

}  // namespace weldline::test
