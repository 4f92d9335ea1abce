#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "../program/ProgramTest.h"
#include "InputForms.h"

namespace weldline::test {

// Runs the built program on several ranks, started by the launcher of MPI.
class MpiProgramTest : public ProgramTest {
  protected:
    using Names = std::vector<std::string>;
    using Json = nlohmann::json;

    Outcome onRanks(int ranks, const Names& arguments, Setting setting = {},
                    const std::string& program = WELDLINE_PROGRAM) const;

    // The processes that a process has started and that have not ended.
    static std::vector<int> childrenOf(int parent);

    // Lines of our own among those of the launcher.
    static Names ownLines(const Outcome& outcome);

    // The run ended with this code and exactly one line of ours, which contains all these texts.
    static void expectError(const Outcome& outcome, int exitCode, const Names& texts);

    // The JSON summary of a run; 0 ranks: without a launcher.
    Json summaryOf(int ranks, const std::string& input, const Names& options = {}) const;

    // Two weld lines of the same size and some smaller ones, in all forms of input and in this
    // number of pieces; answers the whole.
    MeshPart putForms(int pieces) const;
    static const std::vector<const char*>& formNames();

    // What remains of a summary when what belongs to the run itself is taken out, and with it what
    // the order of sums decides.
    static Json comparable(Json summary);

    // Result files in the test's folder: those that start with `name`.
    Names filesOf(const std::string& name) const;
};

}  // namespace weldline::test
