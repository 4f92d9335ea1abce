#include <cmath>
#include <filesystem>
#include <set>

#include "PngPicture.h"
#include "ProgramTest.h"

// A result as a picture, drawn without a display.

namespace weldline::test {

namespace {

using Pixel = std::array<int, 4>;

// Without a display, unless another is given.
Setting without(std::map<std::string, std::string> environment = {}) {
    Setting setting;
    setting.environment = std::move(environment);
    setting.environment.emplace("DISPLAY", "");
    return setting;
}

// Weld lines are red to orange; nothing else in a picture is.
bool isLineColour(const Pixel& pixel) {
    return pixel[3] == 255 && pixel[0] > pixel[1] + 40 && pixel[0] > pixel[2] + 40;
}

class Render : public ProgramTest {
  protected:
    // Two fronts meet head-on on the plane x = 0.5 of a plate.
    std::string result() const {
        const std::string input = write("part.vtu", plateWithTwoFronts(20, 4, 2));
        EXPECT_EQ(weldline({"analyze", input, "-o", at("result.vtu")}).exitCode, 0);
        return at("result.vtu");
    }

    // One front runs from end to end of the plate and meets nothing.
    std::string resultWithoutLines() const {
        SampleMesh mesh = plate(20, 4, 2);
        addCellArray(mesh, "FillTime", [](SampleMesh::Point middle) { return middle[0] + 0.05; });
        const std::string input = write("single.vtu", mesh);
        EXPECT_EQ(weldline({"analyze", input, "-o", at("single_result.vtu")}).exitCode, 0);
        return at("single_result.vtu");
    }

    PngPicture drawn(const std::vector<std::string>& look,
                     const std::string& name = "out.png") const {
        return drawnOf(result(), look, name);
    }

    PngPicture drawnOf(const std::string& input, std::vector<std::string> arguments,
                       const std::string& name = "out.png") const {
        arguments.insert(arguments.begin(), {"render", input, "-o", at(name)});
        const Outcome outcome = weldline(arguments, without());
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.out, "");
        return readPng(at(name));
    }

    // Nothing but an error, and no file but these.
    void expectNothing(const std::vector<std::string>& arguments, int exitCode,
                       const std::vector<std::string>& texts,
                       const Setting& setting = without()) const {
        const std::vector<std::string> before = entries();
        expectError(weldline(arguments, setting), exitCode, texts);
        EXPECT_EQ(entries(), before);
        EXPECT_TRUE(temporaries().empty());
    }
};

TEST_F(Render, draws_a_picture_of_the_size_asked_for) {
    const PngPicture usual = drawn({});
    EXPECT_EQ(usual.width, 1600);
    EXPECT_EQ(usual.height, 1000);
    EXPECT_EQ(usual.parts, 3);
    std::set<Pixel> colours;
    for (int y = 0; y < usual.height; ++y)
        for (int x = 0; x < usual.width; ++x) colours.insert(usual.at(x, y));
    EXPECT_GT(colours.size(), 100u);
    const PngPicture small = drawn({"--size", "16x33"});
    EXPECT_EQ(small.width, 16);
    EXPECT_EQ(small.height, 33);
}

// Seen from above, the plate fills 93 % of the width; its line runs across it in the middle.
TEST_F(Render, draws_the_line_where_it_is) {
    const PngPicture picture = drawn({"--view", "+z", "--size", "190x120"});
    int inMiddle = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            if (!isLineColour(picture.at(x, y))) continue;
            EXPECT_NEAR(x + 0.5, 95.0, 4.0) << y;
            EXPECT_NEAR(y + 0.5, 60.0, 0.1 * 0.93 * 190 + 4.0) << x;
            ++inMiddle;
        }
    // The line is 0.2 long, or 35 pixels.
    EXPECT_GE(inMiddle, 35);
}

// From its end the plate fills 139 x 70 pixels; the line runs round it half way in.
TEST_F(Render, hides_the_line_behind_the_part_unless_it_shines_through) {
    const auto warmWithin = [](const PngPicture& picture) {
        int count = 0;
        for (int y = 30; y < 70; ++y)
            for (int x = 25; x < 125; ++x)
                count += picture.at(x, y)[0] > picture.at(x, y)[2] ? 1 : 0;
        return count;
    };
    const std::vector<std::string> look{"--view", "+x", "--size", "150x100", "--colour-by", "none"};
    EXPECT_EQ(warmWithin(drawn(look)), 0);
    std::vector<std::string> through = look;
    through.emplace_back("--through");
    EXPECT_GT(warmWithin(drawn(through)), 50);
}

// The line behind the hole of the plate of 120 mm, from x = 54 to 60 at y = 31, lies within it.
// From above a millimetre is 1.47 pixels, and the middle of the plate is that of the picture.
TEST_F(Render, lets_a_line_within_the_part_shine_through) {
    const std::string input = WELDLINE_EXAMPLES "/plate_hole/plate_hole.vtu";
    EXPECT_EQ(weldline({"analyze", input, "-o", at("plate.vtu")}).exitCode, 0);
    const PngPicture picture =
        drawnOf(at("plate.vtu"), {"--view", "+z", "--size", "190x120", "--colour-by", "none"});
    int warm = 0;
    for (int y = 54; y < 64; ++y)
        for (int x = 87; x < 95; ++x)
            warm += picture.at(x, y)[0] > picture.at(x, y)[2] + 30 ? 1 : 0;
    EXPECT_GE(warm, 8);
}

TEST_F(Render, shows_early_melt_dark_and_late_melt_light) {
    const PngPicture picture = drawn({"--view", "+z", "--size", "190x120", "--bands", "4"});
    const auto sum = [&](int x) {
        const Pixel pixel = picture.at(x, 60);
        return pixel[0] + pixel[1] + pixel[2];
    };
    // A quarter of the way from the gate to the line each: at 6, 50, 94 and 138 of 176 / 2.
    EXPECT_LT(sum(15), sum(35));
    EXPECT_LT(sum(35), sum(58));
    EXPECT_LT(sum(58), sum(82));
    EXPECT_LT(sum(175), sum(155));
    // Within a band nothing changes.
    EXPECT_EQ(picture.at(32, 60), picture.at(38, 60));
}

TEST_F(Render, shows_grey_where_the_melt_did_not_come) {
    SampleMesh mesh = plate(20, 4, 2);
    addCellArray(mesh, "FillTime",
                 [](SampleMesh::Point middle) { return middle[0] < 0.5 ? middle[0] + 0.1 : -1.0; });
    ASSERT_EQ(
        weldline({"analyze", write("short.vtu", mesh), "-o", at("short_result.vtu")}).exitCode, 0);
    ASSERT_EQ(weldline({"render", at("short_result.vtu"), "-o", at("short.png"), "--view", "+z",
                        "--size", "190x120"},
                       without())
                  .exitCode,
              0);
    const PngPicture picture = readPng(at("short.png"));
    const Pixel grey = picture.at(140, 60);
    EXPECT_EQ(grey[0], grey[1]);
    EXPECT_EQ(grey[1], grey[2]);
    EXPECT_LT(grey[0], 200);
    EXPECT_GT(grey[0], 60);
    const Pixel reached = picture.at(50, 60);
    EXPECT_GT(reached[2], reached[0] + 40);
}

// The picture is put together from tiles of 512 pixels.
TEST_F(Render, joins_tiles_without_a_seam) {
    const PngPicture picture = drawnOf(
        resultWithoutLines(), {"--view", "+z", "--size", "1400x700", "--colour-by", "none"});
    const Pixel part = picture.at(400, 330);
    for (int x = 100; x < 1300; ++x) EXPECT_EQ(picture.at(x, 330), part) << x;
    for (int y = 270; y < 380; ++y) EXPECT_EQ(picture.at(512, y), part) << y;
}

TEST_F(Render, lets_the_background_through) {
    const PngPicture clear = drawn({"--background", "transparent", "--size", "190x120"});
    EXPECT_EQ(clear.parts, 4);
    EXPECT_EQ(clear.at(0, 0)[3], 0);
    EXPECT_EQ(clear.at(95, 60)[3], 255);
    EXPECT_EQ(drawn({"--size", "190x120"}).at(0, 0), (Pixel{255, 255, 255, 255}));
    const Pixel dark = drawn({"--background", "dark", "--size", "190x120"}).at(0, 0);
    EXPECT_LT(dark[0] + dark[1] + dark[2], 120);
}

// Two views side by side: the plate from above and from its end, on one scale.
TEST_F(Render, puts_several_views_into_one_picture) {
    const PngPicture picture =
        drawn({"--view", "+z", "--view", "+x", "--size", "190x80", "--background", "transparent"});
    const auto columns = [&](int from, int to) {
        int count = 0;
        for (int x = from; x < to; ++x) {
            bool isDrawn = false;
            for (int y = 0; y < picture.height; ++y) isDrawn |= picture.at(x, y)[3] > 128;
            count += isDrawn ? 1 : 0;
        }
        return count;
    };
    EXPECT_NEAR(columns(0, 95), 0.93 * 95, 3);
    // The line stands out of the skin by half its thickness.
    EXPECT_NEAR(columns(95, 190), 0.2 * 0.93 * 95, 5);
}

TEST_F(Render, of_a_result_without_lines_is_a_picture) {
    const PngPicture picture = drawnOf(resultWithoutLines(), {"--size", "400x300"});
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) ASSERT_FALSE(isLineColour(picture.at(x, y)));
}

TEST_F(Render, replaces_an_older_picture) {
    write("out.png", "an older one");
    EXPECT_EQ(drawn({"--size", "40x30"}).width, 40);
}

TEST_F(Render, draws_the_same_bytes_again) {
    drawn({"--size", "400x300"}, "a.png");
    drawn({"--size", "400x300"}, "b.png");
    EXPECT_TRUE(read(at("a.png")) == read(at("b.png")));
}

TEST_F(Render, refuses_what_is_no_result) {
    const std::string input = write("part.vtu", plateWithTwoFronts(4, 1, 2));
    expectNothing({"render", input, "-o", at("out.png")}, 3, {"part.vtu", "MeetingAngle"});
    expectNothing({"render", at("none.vtu"), "-o", at("out.png")}, 3, {"none.vtu"});
}

TEST_F(Render, refuses_outputs_that_make_no_sense) {
    const std::string input = result();
    expectNothing({"render", input, "-o", at("out.jpg")}, 2, {"out.jpg", ".png"});
    expectNothing({"render", input}, 2, {"--output"});
    std::filesystem::create_symlink(input, at("link.png"));
    expectNothing({"render", input, "-o", at("link.png")}, 2, {"link.png", "replace the input"});
    expectNothing({"render", input, "-o", at("no/out.png")}, 1, {"no/out.png"});
}

TEST_F(Render, refuses_looks_that_make_no_sense) {
    const std::string input = result();
    for (const char* size : {"15x100", "100x15", "16385x100", "100x16385", "100", "x", "-5x20",
                             "1600x1000x2", "100x100.5", "99999999999x16"})
        expectNothing({"render", input, "-o", at("out.png"), "--size", size}, 2,
                      {size, "16 to 16384"});
    expectNothing({"render", input, "-o", at("out.png"), "--view", "top"}, 2, {"--view", "top"});
    expectNothing({"render", input, "-o", at("out.png"), "--bands", "0"}, 2, {"--bands"});
    expectNothing({"render", input, "-o", at("out.png"), "--bands", "257"}, 2, {"--bands"});
    expectNothing({"render", input, "-o", at("out.png"), "--limit", "0"}, 2, {"--limit"});
    expectNothing({"render", input, "-o", at("out.png"), "--background", "blue"}, 2, {"blue"});
}

TEST_F(Render, tells_when_there_is_neither_egl_nor_a_display) {
    const std::string input = result();
    const std::vector<std::string> arguments{"render", input, "-o", at("out.png")};
    expectNothing(arguments, 1, {"out.png", "EGL", "DISPLAY", "libegl1"},
                  without({{"__EGL_VENDOR_LIBRARY_FILENAMES", at("nowhere.json")}}));
    expectNothing(arguments, 1, {"out.png", "EGL"},
                  without({{"LIBGL_DRIVERS_PATH", at("nowhere")}}));
}

// VTK ends a process whose X server does not answer.
TEST_F(Render, outlives_a_driver_that_ends_its_process) {
    const std::string input = result();
    write("out.png", "an older one");
    expectNothing(
        {"render", input, "-o", at("out.png")}, 1, {"out.png", "ended the process"},
        without({{"__EGL_VENDOR_LIBRARY_FILENAMES", at("nowhere.json")}, {"DISPLAY", ":4711"}}));
    EXPECT_EQ(read(at("out.png")), "an older one");
}

}  // namespace

}  // namespace weldline::test
