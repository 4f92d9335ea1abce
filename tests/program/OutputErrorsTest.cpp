#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <thread>

#include "ProgramTest.h"

// Places that do not take a result, and runs that are interrupted: one clear line, nothing half
// done, nothing left behind.

namespace weldline::test {

namespace {

using Names = std::vector<std::string>;

class OutputErrors : public ProgramTest {
  protected:
    std::string input() const { return write("part.vtu", plateWithTwoFronts(10, 2, 2)); }
};

TEST_F(OutputErrors, result_with_another_ending) {
    expectError(weldline({"analyze", input(), "-o", at("result.vtk")}), 2, {"result.vtk", ".vtu"});
    EXPECT_EQ(entries(), Names{"part.vtu"});
}

TEST_F(OutputErrors, polyhedra_in_an_exodus_result) {
    SampleMesh prism;
    for (const double z : {0.0, 1.0})
        prism.points.insert(prism.points.end(),
                            {{0, 0, z}, {2, 0, z}, {3, 1, z}, {1, 2, z}, {-1, 1, z}});
    prism.addCell(15, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    prism.cellArrays.push_back({"FillTime", "Float64", {1.0}});
    const std::string file = write("part.vtu", prism);
    expectError(weldline({"analyze", file, "-o", at("result.exo")}), 3,
                {"result.exo", "no polyhedra", ".vtu"});
    EXPECT_EQ(entries(), Names{"part.vtu"});
}

TEST_F(OutputErrors, exodus_result_into_a_pipe) {
    ASSERT_EQ(::mkfifo(at("result.exo").c_str(), 0600), 0);
    expectError(weldline({"analyze", input(), "-o", at("result.exo")}), 2,
                {"result.exo", "no regular file"});
    EXPECT_TRUE(std::filesystem::is_fifo(at("result.exo")));
}

TEST_F(OutputErrors, result_that_is_nothing_but_an_ending) {
    expectError(weldline({"analyze", input(), "-o", at(".vtu")}), 2, {".vtu"});
}

TEST_F(OutputErrors, result_in_a_folder_that_is_missing) {
    expectError(weldline({"analyze", input(), "-o", at("out/result.vtu")}), 1,
                {"out/result.vtu", "does not exist"});
    EXPECT_EQ(entries(), Names{"part.vtu"});
}

TEST_F(OutputErrors, json_in_a_folder_that_is_missing) {
    expectError(weldline({"analyze", input(), "--json", at("out/result.json")}), 1,
                {"out/result.json", "does not exist"});
}

TEST_F(OutputErrors, result_that_is_a_folder) {
    std::filesystem::create_directory(at("result.vtu"));
    expectError(weldline({"analyze", input(), "-o", at("result.vtu")}), 1,
                {"result.vtu", "folder"});
}

// The folder of the processes takes no files, whoever asks.
TEST_F(OutputErrors, folder_that_takes_no_files) {
    expectError(weldline({"analyze", input(), "-o", "/proc/result.vtu"}), 1, {"/proc/result.vtu"});
}

TEST_F(OutputErrors, output_is_found_unwritable_before_the_input_is_read) {
    expectError(weldline({"analyze", at("missing.vtu"), "-o", "/proc/result.vtu"}), 1,
                {"/proc/result.vtu"});
}

TEST_F(OutputErrors, result_in_place_of_the_input) {
    const std::string file = input();
    const std::string before = read(file);
    expectError(weldline({"analyze", file, "-o", at("./part.vtu")}), 2, {"part.vtu", "input"});
    EXPECT_EQ(read(file), before);
}

TEST_F(OutputErrors, result_in_place_of_a_piece_of_the_input) {
    const std::string piece = input();
    const std::string before = read(piece);
    const std::string whole =
        write("whole.pvtu", std::string("<VTKFile type=\"PUnstructuredGrid\">"
                                        "<PUnstructuredGrid><Piece Source=\"part.vtu\"/>"
                                        "</PUnstructuredGrid></VTKFile>"));
    expectError(weldline({"analyze", whole, "-o", piece}), 2, {"part.vtu", "input"});
    EXPECT_EQ(read(piece), before);
}

TEST_F(OutputErrors, result_that_links_to_the_input) {
    const std::string file = input();
    std::filesystem::create_symlink(file, at("link.vtu"));
    expectError(weldline({"analyze", file, "-o", at("link.vtu")}), 2, {"link.vtu", "input"});
}

TEST_F(OutputErrors, json_in_place_of_the_result) {
    expectError(weldline({"analyze", input(), "-o", at("a.vtu"), "--json", at("a.vtu")}), 2,
                {"a.vtu", "two outputs"});
}

TEST_F(OutputErrors, json_in_place_of_the_control_file) {
    const std::string control = write("run.cmp", std::string("[WeldLinePlotCtrl]\n"
                                                             "[/WeldLinePlotCtrl]\n"));
    expectError(weldline({"analyze", input(), "--control", control, "--json", control}), 2,
                {"run.cmp", "control file"});
}

TEST_F(OutputErrors, full_disk_under_the_json) {
    const Outcome outcome = weldline({"analyze", input(), "--json", "/dev/full"});
    expectError({outcome.exitCode, 0, "", outcome.err}, 1, {"/dev/full", "No space left"});
    EXPECT_TRUE(temporaries().empty());
}

TEST_F(OutputErrors, full_disk_under_standard_output) {
    for (const Names& arguments : {Names{"analyze", input()},
                                   {"analyze", input(), "--json", "-"},
                                   {"info", input()},
                                   {"settings"},
                                   {"--help"}}) {
        Setting setting;
        setting.standardOutput = "/dev/full";
        const Outcome outcome = weldline(arguments, setting);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(linesWith(outcome.err, "standard output: No space left"), 1) << outcome.err;
    }
}

TEST_F(OutputErrors, standard_output_that_is_closed) {
    Setting setting;
    setting.closeStandardOutput = true;
    expectError(weldline({"settings"}, setting), 1, {"standard output"});
}

TEST_F(OutputErrors, standard_output_that_nobody_reads) {
    Setting setting;
    setting.brokenStandardOutput = true;
    expectError(weldline({"settings"}, setting), 1, {"standard output: Broken pipe"});
}

// The result would need several times this size; the control file fits.
TEST_F(OutputErrors, full_disk_under_the_result) {
    Setting setting;
    setting.fileSizeLimit = 1000;
    const std::string file = input();
    const Outcome outcome = weldline({"analyze", file, "-o", at("result.vtu")}, setting);
    expectError(outcome, 1, {"result.vtu"});
    EXPECT_EQ(entries(), Names{"part.vtu"});
    EXPECT_TRUE(temporaries().empty());
}

TEST_F(OutputErrors, full_disk_under_an_exodus_result) {
    Setting setting;
    setting.fileSizeLimit = 1000;
    const std::string file = input();
    expectError(weldline({"analyze", file, "-o", at("result.exo")}, setting), 1, {"result.exo"});
    EXPECT_EQ(entries(), Names{"part.vtu"});
    EXPECT_TRUE(temporaries().empty());
}

TEST_F(OutputErrors, full_disk_keeps_the_result_of_an_earlier_run) {
    const std::string file = input();
    ASSERT_EQ(weldline({"analyze", file, "-o", at("result.vtu")}).exitCode, 0);
    const std::string before = read(at("result.vtu"));
    Setting setting;
    setting.fileSizeLimit = 1000;
    EXPECT_EQ(weldline({"analyze", file, "-o", at("result.vtu")}, setting).exitCode, 1);
    EXPECT_EQ(read(at("result.vtu")), before);
}

TEST_F(OutputErrors, temporary_folder_that_is_missing) {
    Setting setting;
    setting.environment["TMPDIR"] = at("nowhere");
    expectError(weldline({"analyze", input()}, setting), 1, {"nowhere", "TMPDIR"});
}

// Holds a run in the middle of its work: the JSON goes to a pipe that nobody reads yet, while the
// control file is already begun under its temporary name.
class Interruption : public OutputErrors {
  protected:
    void expectEnd(int signal, const std::string& text) {
        const std::string file = input();
        ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
        const Names before = entries();
        Setting setting;
        setting.whileRunning = [&](int child) {
            const auto isInTheMiddle = [&] {
                return entries().size() > before.size() && !temporaries().empty();
            };
            for (int wait = 0; wait < 6000 && !isInTheMiddle(); ++wait)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            EXPECT_GT(entries().size(), before.size());
            EXPECT_FALSE(temporaries().empty());
            ::kill(child, signal);
        };
        const Outcome outcome =
            weldline({"analyze", file, "-o", at("result.vtu"), "--json", at("pipe")}, setting);
        EXPECT_EQ(outcome.signal, signal);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(linesWith(outcome.err, "weldline: "), 1) << outcome.err;
        EXPECT_TRUE(contains(outcome.err, text)) << outcome.err;
        EXPECT_EQ(entries(), before);
        EXPECT_TRUE(temporaries().empty());
    }
};

TEST_F(Interruption, ctrl_c_leaves_nothing_behind_and_ends_by_the_signal) {
    expectEnd(SIGINT, "interrupted by Ctrl-C");
}

TEST_F(Interruption, termination_leaves_nothing_behind_and_ends_by_the_signal) {
    expectEnd(SIGTERM, "ended by another process");
}

}  // namespace

}  // namespace weldline::test
