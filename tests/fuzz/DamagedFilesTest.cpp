#include "../program/ProgramTest.h"

// Files that make VTK crash or ask for all memory: one clear line, exit code 3 and nothing left.
// The damage is the smallest that does it, in a data set of the corpus that is good otherwise.

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

class DamagedFiles : public ProgramTest {
  protected:
    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return text.replace(at, from.size(), to);
    }

    // A file of the corpus with one replacement, refused in one line with these texts.
    void expectRefused(const std::string& name, const std::string& from, const std::string& to,
                       const std::vector<std::string>& texts) const {
        const std::string good = write("good-" + name, read(WELDLINE_CORPUS "/import/" + name));
        EXPECT_EQ(weldline({"info", good}).exitCode, 0);
        expectUnusable(write(name, replaced(read(good), from, to)), texts);
    }

    // The same for one file of the OpenFOAM case in text.
    void expectCaseRefused(const std::string& file, const std::string& from, const std::string& to,
                           const std::vector<std::string>& texts) const {
        fs::copy(WELDLINE_CORPUS "/foam/text", at("case"), fs::copy_options::recursive);
        EXPECT_EQ(weldline({"info", at("case/case.foam")}).exitCode, 0);
        write("case/" + file, replaced(read(at("case/" + file)), from, to));
        expectUnusable(at("case/case.foam"), texts);
    }

    void expectUnusable(const std::string& input, std::vector<std::string> texts) const {
        texts.push_back("'" + input + "': ");
        expectError(weldline({"info", input}), 3, texts);
        expectError(weldline({"analyze", input, "-o", at("result.vtu")}), 3, texts);
        EXPECT_FALSE(fs::exists(at("result.vtu")));
        EXPECT_FALSE(fs::exists(at("result.cmp")));
        EXPECT_TRUE(temporaries().empty());
    }
};

TEST_F(DamagedFiles, xml_array_of_no_type) {
    expectRefused("appended-raw.vtu", "type=\"Float64\" Name=\"TimeValue\"",
                  "type=\"Float6\" Name=\"TimeValue\"",
                  {"leads the reader astray", "write it again"});
}

TEST_F(DamagedFiles, legacy_array_of_no_type) {
    expectRefused("legacy-text.vtk", "TimeValue 1 1 double", "TimeValue 1 1 doubt",
                  {"leads the reader astray", "write it again"});
}

TEST_F(DamagedFiles, legacy_counts_beyond_the_file) {
    expectRefused("legacy-text.vtk", "FieldData 1\nTimeValue", "FieldData 2147483647\nTimeValue",
                  {"'FIELD FieldData 2147483647' announces more than the file can hold"});
    expectRefused("legacy-5-binary.vtk", "POINTS 31 ", "POINTS 99999999999999999999 ",
                  {"'POINTS 99999999999999999999 double' announces more"});
    expectRefused("legacy-text.vtk", "CELLS 5 36", "CELLS 5 -36", {"'CELLS 5 -36'"});
}

// Where the corners of elements are missing, the library of the format calls exit().
TEST_F(DamagedFiles, cgns_without_connectivity) {
    const std::string name = "ElementConnectivity";
    std::string bytes = read(WELDLINE_CORPUS "/import/adf.cgns");
    for (std::size_t at = bytes.find(name); at != std::string::npos; at = bytes.find(name, at))
        bytes[at] = 'e';
    expectUnusable(write("part.cgns", bytes), {"leads the reader astray", "write it again"});
}

TEST_F(DamagedFiles, cgns_that_ends_too_early) {
    for (const char* name : {"hdf5.cgns", "adf.cgns"}) {
        const std::string whole = read(std::string(WELDLINE_CORPUS "/import/") + name);
        for (const std::size_t size : {1000U, 9000U, 20000U})
            expectUnusable(write("cut.cgns", whole.substr(0, size)), {});
    }
}

TEST_F(DamagedFiles, case_with_a_patch_that_is_not_opened) {
    expectCaseRefused("constant/polyMesh/boundary", "    {\n        type wall;",
                      "        type wall;", {"damaged or incomplete"});
}

TEST_F(DamagedFiles, case_with_a_cell_number_beyond_all_memory) {
    expectCaseRefused("constant/polyMesh/owner", "11\n(\n0\n", "11\n(\n2147483646\n", {});
}

}  // namespace

}  // namespace weldline::test
