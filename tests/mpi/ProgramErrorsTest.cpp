// Ranks: 1 3 4, as processes that the tests start.

#include <filesystem>

#include "ProgramMpiTest.h"

// Whatever fails on whatever rank: one line, one exit code, nothing left.

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

class MpiErrors : public MpiProgramTest {
  protected:
    void SetUp() override {
        putForms(4);
        m_before = entries();
    }
    void TearDown() override {
        EXPECT_EQ(entries(), m_before);
        EXPECT_EQ(temporaries(), Names{});
    }

    Names m_before;
};

TEST_F(MpiErrors, wrong_usage) {
    expectError(onRanks(3, {"analyze", at("whole.vtu"), "--bogus"}), 2, {"--bogus"});
    expectError(onRanks(3, {"analyze", at("whole.vtu"), "--inlet", "("}), 2, {"'('"});
    expectError(onRanks(3, {"analyze", at("whole.vtu"), "--set", "nGrad=x"}), 2, {"nGrad"});
    expectError(onRanks(3, {"analyze", at("whole.vtu"), "-o", at("r.vtk")}), 2,
                {"ends in .vtu, .pvtu"});
    expectError(onRanks(3, {"analyze", at("whole.vtu"), "--time", "soon"}), 2, {"'soon'"});
}

TEST_F(MpiErrors, no_such_input) {
    expectError(onRanks(3, {"analyze", at("none.vtu")}), 3, {at("none.vtu"), "no such file"});
    expectError(onRanks(3, {"info", at("none.vtu")}), 3, {at("none.vtu"), "no such file"});
}

TEST_F(MpiErrors, missing_field) {
    for (const char* form : {"whole.vtu", "pieces.pvtu", "decomposed/decomposed.foam"})
        expectError(onRanks(3, {"analyze", at(form), "--field", "T"}), 3,
                    {at(form), "no cell array 'T'", "name the fill time among"});
}

// Only rank 3 knows of it.
TEST_F(MpiErrors, field_missing_in_one_piece) {
    const std::string piece = read(at("ghosts3.vtu"));
    std::string other = piece;
    other.replace(other.find("Name=\"FillTime\""), 15, "Name=\"Pressure\"");
    write("ghosts3.vtu", other);
    expectError(onRanks(4, {"analyze", at("ghosts.pvtu")}), 3,
                {at("ghosts.pvtu"), "not all blocks have the cell array 'FillTime'"});
    write("ghosts3.vtu", piece);
}

TEST_F(MpiErrors, damaged_piece) {
    const std::string piece = read(at("ghosts2.vtu"));
    write("ghosts2.vtu", piece.substr(0, piece.size() / 2));
    expectError(onRanks(4, {"analyze", at("ghosts.pvtu")}), 3, {at("ghosts2.vtu"), "damaged"});
    write("ghosts2.vtu", piece);
}

TEST_F(MpiErrors, damaged_file_of_another_format) {
    const std::string file = write("part.cgns", "no mesh at all");
    expectError(onRanks(3, {"analyze", file}), 3, {file, "no CGNS data set"});
    fs::remove(file);
}

TEST_F(MpiErrors, processes_of_a_case_at_different_times) {
    fs::rename(at("decomposed/processor2/2"), at("decomposed/processor2/1"));
    expectError(onRanks(4, {"analyze", at("decomposed/decomposed.foam")}), 3,
                {"end at different times (2 and 1)"});
    fs::rename(at("decomposed/processor2"), at("decomposed/away"));
    expectError(onRanks(4, {"analyze", at("decomposed/decomposed.foam")}), 3,
                {"no folder 'processor2'"});
}

// A cell given twice, once in each of two pieces that different ranks read.
TEST_F(MpiErrors, three_cells_at_one_face) {
    fs::copy_file(at("ghosts1.vtu"), at("ghosts0.vtu"), fs::copy_options::overwrite_existing);
    expectError(onRanks(4, {"analyze", at("ghosts.pvtu")}), 3, {at("ghosts.pvtu"), "cell"});
}

TEST_F(MpiErrors, patch_beside_the_mesh) {
    std::string gate = read(at("block4.vtu"));
    // Between the middle of the first cells and the end.
    const std::size_t at3 = gate.find("Name=\"connectivity\"");
    const std::size_t list = gate.find('\n', at3) + 1;
    gate.replace(list, gate.find('\n', list) - list, "0 1 14 13");
    gate.replace(gate.find('\n', gate.find("Name=\"offsets\"")) + 1, 0, "4\n");
    write("block4.vtu", gate);
    const Outcome outcome = onRanks(4, {"analyze", at("blocks.vtm")});
    EXPECT_EQ(outcome.exitCode, 3) << outcome.err;
    EXPECT_EQ(ownLines(outcome).size(), 1U);
}

TEST_F(MpiErrors, nothing_is_reached) {
    SampleMesh mesh = plate(6, 1, 1);
    addCellArray(mesh, "FillTime", [](SampleMesh::Point) { return -1.0; });
    write("part.vtu", mesh);
    expectError(onRanks(3, {"analyze", at("part.vtu")}), 3, {"the melt reaches no cell"});
    fs::remove(at("part.vtu"));
}

TEST_F(MpiErrors, output_that_cannot_be_written) {
    for (const char* name : {"nowhere/r.pvtu", "nowhere/r.vtu"})
        expectError(onRanks(3, {"analyze", at("whole.vtu"), "-o", at(name)}), 1,
                    {at(name), "does not exist"});
}

#ifdef WELDLINE_FAULT_SHIM
// One rank alone meets a disk that fails, whatever it does there.
TEST_F(MpiErrors, pieces_that_cannot_be_written) {
    fs::create_directory(at("out"));
    const Names command{"analyze", at("whole.vtu"), "-o", at("out/r.pvtu")};
    ASSERT_EQ(onRanks(3, command).exitCode, 0);
    const std::string before = read(at("out/r.pvtu"));
    const auto files = [&] {
        Names names;
        for (const auto& file : fs::directory_iterator(at("out")))
            names.push_back(file.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    };
    const Names namesBefore = files();
    Names other = command;
    other.insert(other.end(), {"--method", "2"});
    for (const std::string call : {"open", "write", "fsync", "rename"})
        for (const int rank : {1, 2}) {
            SCOPED_TRACE(call + " on rank " + std::to_string(rank));
            Setting setting;
            setting.environment = {{"FAULT_CALL", call},       {"FAULT_AT", "1"},
                                   {"FAULT_ALWAYS", "1"},      {"FAULT_ERROR", "28"},
                                   {"FAULT_UNDER", at("out")}, {"FAULT_REPORT", "/dev/null"}};
            const std::string program = "if [ $OMPI_COMM_WORLD_RANK = " + std::to_string(rank) +
                                        " ]; then LD_PRELOAD=" WELDLINE_FAULT_SHIM
                                        "; export LD_PRELOAD; fi; exec " WELDLINE_PROGRAM " \"$@\"";
            Names words{"-c", program, "weldline"};
            words.insert(words.end(), other.begin(), other.end());
            const Outcome outcome = onRanks(3, words, setting, "/bin/sh");
            expectError(outcome, 1, {"cannot write", "No space left"});
            EXPECT_EQ(read(at("out/r.pvtu")), before);
            EXPECT_EQ(files(), namesBefore);
        }
    fs::remove_all(at("out"));
}
#endif

TEST_F(MpiErrors, input_is_not_written_over) {
    expectError(onRanks(3, {"analyze", at("pieces.pvtu"), "-o", at("pieces.pvtu")}), 2,
                {"would replace the input"});
}

// A result in pieces takes away the pieces of the result before it.
TEST_F(MpiErrors, pieces_of_the_input_are_not_taken_away) {
    ASSERT_EQ(weldline({"analyze", at("whole.vtu"), "-o", at("r.pvtu")}).exitCode, 0);
    const Names before = filesOf("r");
    fs::copy_file(at("r.pvtu"), at("copy.pvtu"));
    for (const std::string& input : {std::string("copy.pvtu"), filesOf("r_").front()})
        expectError(onRanks(3, {"analyze", at(input), "-o", at("r.pvtu"), "--method", "2"}), 2,
                    {at("r.pvtu"), filesOf("r_").front(), "part of the input"});
    EXPECT_EQ(filesOf("r"), before);
    fs::remove(at("copy.pvtu"));
    for (const std::string& name : before) fs::remove(at(name));
}

TEST_F(MpiErrors, control_file_of_one_rank_counts_for_all) {
    expectError(onRanks(3, {"analyze", at("whole.vtu"), "--control", at("none.cmp")}), 3,
                {at("none.cmp")});
}

TEST_F(MpiErrors, no_place_for_temporaries) {
    Setting setting;
    setting.environment["TMPDIR"] = at("no-such-folder");
    expectError(onRanks(3, {"analyze", at("whole.vtu")}, setting), 1,
                {at("no-such-folder"), "TMPDIR"});
}

}  // namespace

}  // namespace weldline::test
