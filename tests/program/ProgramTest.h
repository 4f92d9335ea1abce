#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Child.h"
#include "SampleMesh.h"

namespace weldline::test {

// Runs the built program in a folder of its own, which is removed afterwards. Temporaries of the
// program go to a second folder, so that leftovers are seen.
class ProgramTest : public testing::Test {
  protected:
    ProgramTest();
    ~ProgramTest() override;

    // A name in the test's folder.
    std::string at(const std::string& name) const { return (m_folder / name).string(); }

    std::string write(const std::string& name, const std::string& text) const;
    std::string write(const std::string& name, const SampleMesh& mesh) const;
    static std::string read(const std::string& file);

    Outcome weldline(const std::vector<std::string>& arguments, Setting setting = {}) const;

    // Names in the test's folder, sorted.
    std::vector<std::string> entries() const;

    // Names that the program left among the temporaries, and where those are.
    std::vector<std::string> temporaries() const;
    std::string temporariesFolder() const { return m_temporaries.string(); }

    // The child ended with this code and exactly one line of error that contains all these texts;
    // nothing was said on standard output.
    static void expectError(const Outcome& outcome, int exitCode,
                            const std::vector<std::string>& texts);

  private:
    std::filesystem::path m_folder;
    std::filesystem::path m_temporaries;
};

bool contains(const std::string& text, const std::string& part);

// Number of lines of a text that contain a part.
int linesWith(const std::string& text, const std::string& part);

}  // namespace weldline::test
