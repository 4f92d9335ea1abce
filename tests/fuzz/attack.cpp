// Damaged data sets against the program from outside: whatever a file holds, the program ends by
// itself, with a result or with exit code 3 and one line.
//
//   attack PROGRAM CORPUS [SEED [FIRST [COUNT]]]     default: seed 1, first case 0, 200 cases
//
// A case depends on the seed and its number only, so that one case is repeated by COUNT 1. What
// fails is kept in the folder that the last line names. Exit codes: 0 nothing failed, 1 otherwise.
#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "../program/Child.h"
#include "Damage.h"

namespace {

namespace fs = std::filesystem;
using weldline::fuzz::Dice;
using weldline::test::Outcome;

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

std::vector<fs::path> filesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.file_size() > 0) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

fs::path newFolder() {
    std::string name = (fs::temp_directory_path() / "attack-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return name;
}

// What is wrong with an outcome, nothing where all is well.
std::string complaint(const Outcome& outcome, const fs::path& temporaries) {
    if (outcome.exitCode < 0) return "ended by signal " + std::to_string(outcome.signal);
    if (!fs::is_empty(temporaries)) return "left temporary files";
    if (outcome.exitCode == 0) return "";
    if (outcome.exitCode != 3) return "exit code " + std::to_string(outcome.exitCode);
    if (!outcome.out.empty()) return "standard output beside an error";
    const bool oneLine =
        std::count(outcome.err.begin(), outcome.err.end(), '\n') == 1 && outcome.err.back() == '\n';
    return oneLine && outcome.err.rfind("weldline: ", 0) == 0 ? "" : "not one line of error";
}

class Attack {
  public:
    Attack(std::string program, fs::path corpus, std::uint64_t seed)
        : m_program(std::move(program)),
          m_corpus(std::move(corpus)),
          m_seed(seed),
          m_grids(filesBelow(m_corpus / "import")),
          m_caseFiles(filesBelow(m_corpus / "foam")) {}

    bool survives(long number) {
        Dice dice(m_seed, static_cast<std::uint64_t>(number));
        const fs::path place = m_folder / std::to_string(number);
        const fs::path temporaries = place / "tmp";
        fs::create_directories(temporaries);
        const fs::path input =
            dice.below(3) == 0 ? layOutCase(place, dice) : layOutGrid(place, dice);
        const std::string command = dice.below(3) == 0 ? "info" : "analyze";
        weldline::test::Setting setting;
        setting.environment["TMPDIR"] = temporaries.string();
        const Outcome outcome =
            weldline::test::runProgram(m_program, {command, input.string()}, setting);
        const std::string wrong = complaint(outcome, temporaries);
        ++m_tally[wrong.empty() ? "exit code " + std::to_string(outcome.exitCode) : wrong];
        if (wrong.empty()) {
            fs::remove_all(place);
            return true;
        }
        std::printf("case %ld: %s: '%s %s'\n%s\n", number, wrong.c_str(), command.c_str(),
                    input.c_str(), outcome.err.c_str());
        return false;
    }

    void report() const {
        for (const auto& [outcome, cases] : m_tally)
            std::printf("%ld cases: %s\n", cases, outcome.c_str());
    }

    const fs::path& folder() const { return m_folder; }

  private:
    // Each puts a damaged data set into an empty folder and answers the file to name to the
    // program.
    fs::path layOutGrid(const fs::path& place, Dice& dice) const {
        const fs::path& chosen = m_grids[dice.below(m_grids.size())];
        write(place / chosen.filename(), weldline::fuzz::damaged(bytesOf(chosen), dice));
        return place / chosen.filename();
    }

    fs::path layOutCase(const fs::path& place, Dice& dice) const {
        const fs::path& chosen = m_caseFiles[dice.below(m_caseFiles.size())];
        const fs::path inside = fs::relative(chosen, m_corpus / "foam");
        fs::copy(m_corpus / "foam" / *inside.begin(), place / *inside.begin(),
                 fs::copy_options::recursive);
        write(place / inside, weldline::fuzz::damaged(bytesOf(chosen), dice));
        return place / *inside.begin() / "case.foam";
    }

    std::string m_program;
    fs::path m_corpus;
    std::uint64_t m_seed;
    std::vector<fs::path> m_grids;
    std::vector<fs::path> m_caseFiles;
    fs::path m_folder = newFolder();
    std::map<std::string, long> m_tally;
};

long argument(int argc, char** argv, int index, long otherwise) {
    return index < argc ? std::strtol(argv[index], nullptr, 10) : otherwise;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: attack PROGRAM CORPUS [SEED [FIRST [COUNT]]]\n");
        return 2;
    }
    setvbuf(stdout, nullptr, _IOLBF, 0);
    Attack attack(argv[1], argv[2], static_cast<std::uint64_t>(argument(argc, argv, 3, 1)));
    const long first = argument(argc, argv, 4, 0);
    const long count = argument(argc, argv, 5, 200);
    long failed = 0;
    for (long number = first; number < first + count; ++number)
        failed += attack.survives(number) ? 0 : 1;
    attack.report();
    std::printf("%ld of %ld cases failed\n", failed, count);
    if (failed > 0) std::printf("kept in %s\n", attack.folder().c_str());
    if (failed == 0) fs::remove_all(attack.folder());
    return failed == 0 ? 0 : 1;
}
