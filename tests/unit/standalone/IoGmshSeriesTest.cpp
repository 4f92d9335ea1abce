// Fields of gmsh files over several times, which stay in the file until they are asked for.
#include <array>
#include <filesystem>
#include <fstream>
#include <utility>

#include "IoFiles.h"
#include "IoSeries.h"
#include "base/Errors.h"
#include "io/GmshMesh.h"
#include "io/TimeReader.h"

namespace weldline::test {
namespace {

namespace fs = std::filesystem;

constexpr std::array forms{"22-text", "22-binary", "41-text", "41-binary"};

std::string written(const std::string& form) {
    return WELDLINE_GMSH_FILES "/row-" + form + ".msh";
}

// All that a file holds, numbers by their bits.
std::string everythingIn(const std::string& file, std::size_t windowGrowth) {
    GmshCursor cursor(file, windowGrowth);
    const GmshMesh mesh = readGmshMesh(cursor);
    std::string all;
    const auto add = [&all](const auto& number) {
        all.append(reinterpret_cast<const char*>(&number), sizeof number);
    };
    for (const Vec3& point : mesh.points) add(point);
    for (std::size_t e = 0; e < mesh.elements.size(); ++e) {
        add(mesh.elements[e]);
        add(mesh.types[e]);
        add(mesh.patches[e]);
        for (const int node : mesh.nodes[static_cast<int>(e)]) add(node);
    }
    for (const std::string& name : mesh.patchNames) all += name + "\n";
    for (const GmshData& data : mesh.data) {
        all += data.name + "\n";
        add(data.time);
        readElementData(cursor, data, [&](std::int64_t element, const double* values) {
            add(element);
            for (int i = 0; i < data.components; ++i) add(values[i]);
        });
    }
    return all;
}

class GmshSeries : public FileTest {
  protected:
    // What reading at the last time says after the file has become another one. The time of the
    // change can be hidden.
    std::string errorAfterChange(const std::string& good, const std::string& changed,
                                 bool isHidden) const {
        const std::string file = put("in.msh", good);
        const auto reader = openGmshFile(file);
        const auto time = fs::last_write_time(file);
        std::ofstream(file, std::ios::binary | std::ios::trunc) << changed;
        // File systems may not tell two changes apart that follow at once.
        fs::last_write_time(file, isHidden ? time : time + std::chrono::seconds(1));
        try {
            OpenedDataSet opened;
            reader->read(reader->times().back(), opened);
        } catch (const InputError& error) {
            return error.what();
        }
        return {};
    }
};

// Words, numbers and ends of sections lie across the edge of what is in memory.
TEST_F(GmshSeries, windows_of_any_size_show_the_same) {
    for (const char* form : forms) {
        SCOPED_TRACE(form);
        const std::string all = everythingIn(written(form), 1 << 20);
        EXPECT_GT(all.size(), 20 * sizeof(Vec3));
        for (const std::size_t growth : {1, 2, 3, 7, 64})
            EXPECT_EQ(everythingIn(written(form), growth), all) << growth;
    }
}

TEST_F(GmshSeries, a_file_that_is_replaced_is_read_to_its_end) {
    const std::string file = put("in.msh", contentOf(written("22-text")));
    const auto reader = openGmshFile(file);
    fs::rename(put("other.msh", "something else"), file);
    OpenedDataSet opened;
    reader->read(reader->times().back(), opened);
    EXPECT_EQ(opened.volumes.size(), 1U);
}

TEST_F(GmshSeries, a_file_that_is_changed_is_told) {
    for (const char* form : forms) {
        SCOPED_TRACE(form);
        const std::string good = contentOf(written(form));
        for (const std::string& changed : {good + "\n", good.substr(0, good.size() / 2), good})
            EXPECT_EQ(
                errorAfterChange(good, changed, false),
                "'" + path("in.msh") + "': the file was changed while it was read; read it again");
        EXPECT_EQ(errorAfterChange(good, good, true), "");
    }
}

// Where neither size nor time tell of a change, values are read or refused in words.
TEST_F(GmshSeries, a_change_that_cannot_be_seen_is_no_crash) {
    for (const char* form : forms) {
        SCOPED_TRACE(form);
        const std::string good = contentOf(written(form));
        for (const char letter : {'\0', ' ', 'x', '9', '\xff'}) {
            std::string changed = good;
            changed.replace(good.size() / 2, std::string::npos,
                            std::string(good.size() - good.size() / 2, letter));
            const std::string error = errorAfterChange(good, changed, true);
            // As text, only a nine is a number; as bytes, everything is.
            if (std::string(form).ends_with("text") && letter != '9') {
                EXPECT_NE(error, "") << static_cast<int>(letter);
            }
        }
    }
}

// 300 values of 12 bytes are announced in a file that has room for 300 times 8 bytes.
TEST_F(GmshSeries, binary_values_end_with_the_file) {
    const std::string text = contentOf(written("22-binary")) +
                             "$ElementData\n1\n\"alpha\"\n1\n0\n3\n0\n1\n300\n" +
                             std::string(300 * 8, '\0');
    const std::string error = readError(put("in.msh", text));
    EXPECT_NE(error.find("damaged or incomplete (it ends too early)"), std::string::npos) << error;
}

TEST_F(GmshSeries, no_regular_file) {
    fs::create_symlink("/dev/null", path("in.msh"));
    EXPECT_EQ(readError(path("in.msh")), "'" + path("in.msh") + "': it is no regular file");
}

}  // namespace
}  // namespace weldline::test
