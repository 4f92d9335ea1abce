#include "ProgramTest.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

fs::path newFolder() {
    std::string name = (fs::temp_directory_path() / "program-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return name;
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

ProgramTest::ProgramTest() : m_folder(newFolder()), m_temporaries(newFolder()) {}

ProgramTest::~ProgramTest() {
    std::error_code none;
    fs::remove_all(m_folder, none);
    fs::remove_all(m_temporaries, none);
}

std::string ProgramTest::write(const std::string& name, const std::string& text) const {
    std::ofstream(at(name), std::ios::binary) << text;
    return at(name);
}

std::string ProgramTest::write(const std::string& name, const SampleMesh& mesh) const {
    return write(name, mesh.text());
}

std::string ProgramTest::read(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

Outcome ProgramTest::weldline(const std::vector<std::string>& arguments, Setting setting) const {
    setting.environment.emplace("TMPDIR", m_temporaries.string());
    return runProgram(WELDLINE_PROGRAM, arguments, setting);
}

std::vector<std::string> ProgramTest::entries() const {
    return namesIn(m_folder);
}

std::vector<std::string> ProgramTest::temporaries() const {
    return namesIn(m_temporaries);
}

void ProgramTest::expectError(const Outcome& outcome, int exitCode,
                              const std::vector<std::string>& texts) {
    EXPECT_EQ(outcome.exitCode, exitCode) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.rfind("weldline: ", 0), 0u) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    for (const std::string& text : texts)
        EXPECT_TRUE(contains(outcome.err, text)) << "'" << text << "' not in: " << outcome.err;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

int linesWith(const std::string& text, const std::string& part) {
    std::istringstream stream(text);
    int count = 0;
    for (std::string line; std::getline(stream, line);) count += contains(line, part) ? 1 : 0;
    return count;
}

}  // namespace weldline::test
