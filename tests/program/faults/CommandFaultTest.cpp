#include <cerrno>
#include <filesystem>

#include "FaultTest.h"

// The other commands and kinds of input, when calls on files fail.

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

const std::string inputOutputError = std::to_string(EIO);
const std::string noAccess = std::to_string(EACCES);
const std::string noSpace = std::to_string(ENOSPC);

class CommandFaults : public FaultTest {
  protected:
    void failFiles(const Names& calls, const std::string& error) {
        for (const std::string& call : calls) failEach({call, error});
    }
};

// Where there was no result, there is the whole one or none.
TEST_F(CommandFaults, first_run) {
    const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    prepare({"analyze", part, "-o", at("result.vtu"), "--json", "-"}, {});
    failFiles({"open", "rename", "fsync", "close", "write"}, inputOutputError);
    failEach({"write", noSpace, true});
}

TEST_F(CommandFaults, control_file_of_the_user) {
    const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    const std::string text = "[WeldLinePlotCtrl]\nWeldlingAngleMethod = 2\n[/WeldLinePlotCtrl]\n";
    prepare({"analyze", part, "--control", write("run.cmp", text)}, {});
    failFiles({"open", "read", "write"}, inputOutputError);
}

TEST_F(CommandFaults, info) {
    const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    prepare({"info", part, "--json", at("info.json")}, {{"info.json", "old"}});
    failFiles({"open", "read", "lseek", "stat", "close", "fsync", "rename", "fcntl", "write"},
              inputOutputError);
}

TEST_F(CommandFaults, settings) {
    prepare({"settings", "--check", write("run.cmp", std::string("[WeldLinePlotCtrl]\nnGrad=3\n"))},
            {});
    failFiles({"open", "read", "write", "stat"}, inputOutputError);
}

TEST_F(CommandFaults, pieces) {
    write("part.vtu", plateWithTwoFronts(10, 2, 2));
    const std::string whole =
        write("whole.pvtu", std::string("<VTKFile type=\"PUnstructuredGrid\">"
                                        "<PUnstructuredGrid><Piece Source=\"part.vtu\"/>"
                                        "</PUnstructuredGrid></VTKFile>"));
    write("result.vtu", std::string("old"));
    prepare({"analyze", whole, "-o", at("result.vtu")}, {{"result.vtu", "old"}});
    failFiles({"open", "read", "stat"}, inputOutputError);
}

// VTK's reader looks for files under several names, so that a single failure may mean nothing to
// it. But a file that never can be read is an error.
TEST_F(CommandFaults, case_with_a_file_that_cannot_be_read) {
    fs::copy(WELDLINE_EXAMPLE_CASE, at("case"), fs::copy_options::recursive);
    prepare({"analyze", at("case/plate_hole.foam"), "-o", at("result.vtu")}, {});
    for (const char* file : {"5/fillTime.gz", "constant/polyMesh/boundary",
                             "constant/polyMesh/faces.gz", "constant/polyMesh/owner.gz",
                             "constant/polyMesh/neighbour.gz", "constant/polyMesh/points.gz"}) {
        failAllOn(at("case/") + file, {"open", noAccess});
        failAllOn(at("case/") + file, {"fread", inputOutputError});
    }
}

TEST_F(CommandFaults, case_with_a_boundary_that_cannot_be_read) {
    fs::copy(WELDLINE_EXAMPLE_CASE, at("case"), fs::copy_options::recursive);
    expectError(runFailing({"info", at("case/plate_hole.foam")}, {"open", noAccess},
                           at("case/constant/polyMesh/boundary")),
                3, {"plate_hole.foam", "constant/polyMesh/boundary", "cannot be opened"});
}

// It may well be the program's own.
TEST_F(CommandFaults, control_file_of_an_earlier_run_that_cannot_be_read) {
    const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    write("result.cmp", std::string("text"));
    const Names command{"analyze", part, "-o", at("result.vtu")};
    expectError(weldline(command), 3, {"result.cmp", "was not written by weldline"});
    expectError(runFailing(command, {"open", noAccess}, at("result.cmp")), 3,
                {"result.cmp", "cannot be read (Permission denied)"});
}

// A file that the program opens must not take the number of a stream that the caller closed.
TEST_F(CommandFaults, closed_stream_without_a_replacement) {
    Setting setting;
    setting.closeStandardOutput = true;
    expectError(runFailing({"settings"}, {"open", noAccess}, "/dev/null", setting), 1,
                {"standard stream", "/dev/null", "Permission denied"});
}

TEST_F(CommandFaults, settings_that_the_library_cannot_read) {
    const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    expectError(
        runFailing({"analyze", part}, {"read:fgets", inputOutputError, true}, temporariesFolder()),
        1, {temporariesFolder(), "settings of the run", "TMPDIR"});
}

TEST_F(CommandFaults, trace_that_the_library_cannot_write) {
    const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
    expectError(runFailing({"analyze", part, "-o", at("result.vtu"), "--set", "FlagDebugOutput=1"},
                           {"fclose", noSpace, true}, temporariesFolder()),
                1, {temporariesFolder(), "trace", "TMPDIR"});
    EXPECT_EQ(entries(), Names{"part.vtu"});
}

}  // namespace

}  // namespace weldline::test
