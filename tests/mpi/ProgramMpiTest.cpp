#include "ProgramMpiTest.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "GridMesh.h"

namespace weldline::test {

namespace fs = std::filesystem;

Outcome MpiProgramTest::onRanks(int ranks, const Names& arguments, Setting setting,
                                const std::string& program) const {
    // Debian's Open MPI refuses to run as root, or more ranks than cores, unless told otherwise.
    for (const char* name : {"OMPI_ALLOW_RUN_AS_ROOT", "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM",
                             "OMPI_MCA_rmaps_base_oversubscribe", "OMPI_MCA_mpi_yield_when_idle"})
        setting.environment.emplace(name, "1");
    setting.environment.emplace("OMPI_MCA_hwloc_base_binding_policy", "none");
    // It leaks in modules that are gone when the leak sanitizer looks.
    setting.environment.emplace("ASAN_OPTIONS", "detect_leaks=0");
    setting.environment.emplace("OMPI_MCA_orte_tmpdir_base", "/tmp");
    setting.environment.emplace("TMPDIR", temporariesFolder());
    Names words{"-n", std::to_string(ranks), program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runProgram(WELDLINE_MPIEXEC, words, setting);
}

std::vector<int> MpiProgramTest::childrenOf(int parent) {
    std::vector<int> children;
    std::error_code none;
    for (fs::directory_iterator at("/proc", none), end; !none && at != end; at.increment(none)) {
        const int process = std::atoi(at->path().filename().c_str());
        if (process == 0) continue;
        std::ifstream stat(at->path() / "stat");
        std::string word;
        std::string state;
        // "PROCESS (NAME) STATE PARENT"; our own names have no blanks.
        int theirParent = 0;
        if (stat >> word >> word >> state >> theirParent && theirParent == parent && state != "Z")
            children.push_back(process);
    }
    return children;
}

MpiProgramTest::Names MpiProgramTest::ownLines(const Outcome& outcome) {
    std::istringstream stream(outcome.err);
    Names lines;
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with("weldline: ")) lines.push_back(line);
    return lines;
}

void MpiProgramTest::expectError(const Outcome& outcome, int exitCode, const Names& texts) {
    EXPECT_EQ(outcome.exitCode, exitCode) << outcome.err;
    const Names lines = ownLines(outcome);
    ASSERT_EQ(lines.size(), 1U) << outcome.err;
    for (const std::string& text : texts)
        EXPECT_TRUE(contains(lines[0], text)) << "'" << text << "' not in: " << lines[0];
}

MpiProgramTest::Json MpiProgramTest::summaryOf(int ranks, const std::string& input,
                                               const Names& options) const {
    Names arguments{"analyze", input, "--json", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = ranks == 0 ? weldline(arguments) : onRanks(ranks, arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    return Json::parse(outcome.out, nullptr, false);
}

// Streams from x = 0, 6 and 12 of a block of 12 * 3 * 3 cubes meet at x = 3 and 9.
MeshPart MpiProgramTest::putForms(int pieces) const {
    MeshPart whole = wholePart(hexahedraMesh(12, 3, 3));
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(whole.mesh.cellCount()));
    for (int c = 0; c < whole.mesh.cellCount(); ++c) {
        double x = 0.0;
        for (const int node : whole.mesh.cellNodes[c])
            x += whole.mesh.points[static_cast<std::size_t>(node)].x / 8.0;
        times.push_back(std::min({std::abs(x), std::abs(x - 6.0), std::abs(x - 12.0)}) + 0.5);
    }
    whole.cellFields.push_back(times);
    std::vector<int> partOfCell;
    partOfCell.reserve(times.size());
    for (int c = 0; c < whole.mesh.cellCount(); ++c)
        partOfCell.push_back(c * pieces / whole.mesh.cellCount());
    InputForms(at(""), whole, partOfCell, pieces).all();
    return whole;
}

const std::vector<const char*>& MpiProgramTest::formNames() {
    static const std::vector<const char*> names{"whole.vtu",      "pieces.pvtu",
                                                "ghosts.pvtu",    "blocks.vtm",
                                                "case/case.foam", "decomposed/decomposed.foam"};
    return names;
}

MpiProgramTest::Json MpiProgramTest::comparable(Json summary) {
    for (const char* name : {"ranks", "outputs"}) summary.erase(name);
    summary["input"].erase("file");
    summary["mesh"].erase("volume");
    for (Json& line : summary["components"])
        for (const char* name : {"smallestAngle", "meanAngle", "centroid"}) line.erase(name);
    return summary;
}

MpiProgramTest::Names MpiProgramTest::filesOf(const std::string& name) const {
    Names files;
    for (const std::string& entry : entries())
        if (entry.starts_with(name) || entry.starts_with("." + name)) files.push_back(entry);
    return files;
}

}  // namespace weldline::test
