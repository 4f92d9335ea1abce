#include <gtest/gtest.h>

#include "base/Errors.h"
#include "render/View.h"

namespace weldline::test {

namespace {

void expectVector(Vec3 actual, Vec3 expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

void expectView(const std::string& text, Vec3 right, Vec3 up, Vec3 towardsViewer) {
    SCOPED_TRACE(text);
    const View view = viewOf(text);
    EXPECT_EQ(view.name, text);
    expectVector(view.right, right);
    expectVector(view.up, up);
    expectVector(view.towardsViewer, towardsViewer);
}

std::vector<Vec3> cornersOf(Vec3 size) {
    std::vector<Vec3> corners;
    for (const double x : {0.0, size.x})
        for (const double y : {0.0, size.y})
            for (const double z : {0.0, size.z}) corners.push_back({x, y, z});
    return corners;
}

}  // namespace

TEST(View, along_an_axis_has_z_upwards) {
    expectView("+x", {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    expectView("-x", {0, -1, 0}, {0, 0, 1}, {-1, 0, 0});
    expectView("+y", {-1, 0, 0}, {0, 0, 1}, {0, 1, 0});
    expectView("-y", {1, 0, 0}, {0, 0, 1}, {0, -1, 0});
}

TEST(View, from_above_and_below_has_x_to_the_right) {
    expectView("+z", {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    expectView("-z", {1, 0, 0}, {0, -1, 0}, {0, 0, -1});
}

TEST(View, iso_sees_all_axes_equally_long) {
    const double a = std::sqrt(0.5);
    const double b = std::sqrt(1.0 / 6.0);
    const double c = std::sqrt(1.0 / 3.0);
    expectView("iso", {a, a, 0}, {-b, b, 2 * b}, {c, -c, c});
}

TEST(View, by_angles) {
    // 60 degrees from x towards y, 30 above the ground.
    expectView("60,30", {-std::sqrt(0.75), 0.5, 0}, {-0.25, -std::sqrt(3.0) / 4, std::sqrt(0.75)},
               {std::sqrt(3.0) / 4, 0.75, 0.5});
    expectView("-90,0", {1, 0, 0}, {0, 0, 1}, {0, -1, 0});
    expectView("450.0,-0", {-1, 0, 0}, {0, 0, 1}, {0, 1, 0});
}

TEST(View, of_another_text_is_refused) {
    for (const char* text : {"", "x", "+w", "iso ", "30", "30,", ",30", "30,40,50", "a,b", "nan,0",
                             "0,inf", "30;40", "0,90.5", "0,-91"}) {
        SCOPED_TRACE(text);
        try {
            viewOf(text);
            FAIL() << "no error";
        } catch (const UsageError& error) {
            EXPECT_EQ(std::string(error.what()).rfind("--view: ", 0), 0U) << error.what();
        }
    }
}

// The broad side is seen at an angle of less than 45 degrees, the longer side runs to the right.
TEST(DefaultView, of_a_flat_part_shows_its_broad_side) {
    struct Case {
        Vec3 size;
        Vec3 normal;
        Vec3 longer;
    };
    for (const Case& c :
         {Case{{120, 60, 3}, {0, 0, 1}, {1, 0, 0}}, Case{{60, 120, 3}, {0, 0, 1}, {0, 1, 0}},
          Case{{120, 3, 60}, {0, 1, 0}, {1, 0, 0}}, Case{{3, 120, 60}, {1, 0, 0}, {0, 1, 0}}}) {
        const View view = defaultView(cornersOf(c.size));
        const double seen = std::abs(dot(view.towardsViewer, c.normal));
        EXPECT_GT(seen, std::sqrt(0.5));
        EXPECT_LT(seen, 0.95);
        EXPECT_GT(std::abs(dot(view.right, c.longer)), 0.9);
    }
}

TEST(DefaultView, of_a_compact_part_shows_three_sides) {
    const View view = defaultView(cornersOf({50, 40, 30}));
    EXPECT_GT(std::abs(view.towardsViewer.x), 0.3);
    EXPECT_GT(std::abs(view.towardsViewer.y), 0.3);
    EXPECT_GT(std::abs(view.towardsViewer.z), 0.3);
}

TEST(ViewBox, follows_the_axes_of_the_view) {
    const ViewBox box = boxIn(viewOf("-y"), cornersOf({4, 2, 1}));
    expectVector(box.low, {0, 0, -2});
    expectVector(box.high, {4, 1, 0});
    expectVector(box.size(), {4, 1, 2});
    expectVector(box.centre(), {2, 0.5, -1});
}

}  // namespace weldline::test
