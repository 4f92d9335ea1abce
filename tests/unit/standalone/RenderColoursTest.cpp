#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "render/Canvas.h"
#include "render/Colours.h"

namespace weldline::test {

namespace {

double farthestPart(Colour a, Colour b) {
    return std::max(
        {std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

// Red, green, blue and opacity of a pixel, counted from the upper left corner.
std::array<int, 4> pixelOf(const Canvas& canvas, int x, int y) {
    const auto at = 4 * static_cast<std::size_t>((canvas.height() - 1 - y) * canvas.width() + x);
    const auto& bytes = canvas.bytes();
    return {bytes[at], bytes[at + 1], bytes[at + 2], bytes[at + 3]};
}

using Pixel = std::array<int, 4>;

}  // namespace

TEST(Lightness, of_known_colours) {
    EXPECT_NEAR(lightness({0, 0, 0}), 0.0, 1e-12);
    EXPECT_NEAR(lightness({1, 1, 1}), 100.0, 1e-9);
    // sRGB 0.5 is 0.2140 of the light, whose cube root is 0.5982.
    EXPECT_NEAR(lightness({0.5, 0.5, 0.5}), 116 * 0.5982 - 16, 0.01);
    // Green carries 0.7152 of the light.
    EXPECT_NEAR(lightness({0, 1, 0}), 116 * std::cbrt(0.7152) - 16, 1e-9);
    // So dark that lightness is a straight line: 0.01 / 12.92 of the light, times 903.2963.
    EXPECT_NEAR(lightness({0.01, 0.01, 0.01}), 0.6991, 1e-3);
}

TEST(TimeColours, get_lighter_from_early_to_late) {
    for (int i = 0; i < 100; ++i)
        EXPECT_GT(lightness(timeColour((i + 1) / 100.0)), lightness(timeColour(i / 100.0))) << i;
    EXPECT_LT(lightness(timeColour(0.0)), 25.0);
    EXPECT_GT(lightness(timeColour(1.0)), 90.0);
}

TEST(TimeColours, of_equal_steps_look_equally_far_apart) {
    const double step = (lightness(timeColour(1.0)) - lightness(timeColour(0.0))) / 16;
    for (int i = 0; i < 16; ++i) {
        const double here = lightness(timeColour((i + 1) / 16.0)) - lightness(timeColour(i / 16.0));
        EXPECT_GT(here, 0.5 * step) << i;
        EXPECT_LT(here, 1.5 * step) << i;
    }
}

TEST(AngleColours, get_lighter_from_head_on_to_none) {
    for (int degrees = 0; degrees < 180; ++degrees)
        EXPECT_GT(lightness(angleColour(degrees + 1.0)), lightness(angleColour(degrees)))
            << degrees;
}

TEST(AngleColours, are_warm_where_all_times_are_cool) {
    for (int i = 0; i <= 60; ++i) {
        const Colour angle = angleColour(3.0 * i);
        const Colour time = timeColour(i / 60.0);
        EXPECT_GT(angle.red, angle.blue) << i;
        EXPECT_GT(std::max(time.green, time.blue), time.red) << i;
        for (int j = 0; j <= 60; ++j)
            EXPECT_GT(farthestPart(angle, timeColour(j / 60.0)), 0.13) << i << " " << j;
    }
}

TEST(Colours, beyond_the_ends_are_those_of_the_ends) {
    EXPECT_EQ(farthestPart(timeColour(-1.0), timeColour(0.0)), 0.0);
    EXPECT_EQ(farthestPart(timeColour(2.0), timeColour(1.0)), 0.0);
    EXPECT_EQ(farthestPart(angleColour(181.0), angleColour(180.0)), 0.0);
}

TEST(Colours, mixed_in_a_share) {
    const Colour mix = mixed({0.0, 1.0, 0.5}, {1.0, 0.0, 0.5}, 0.25);
    EXPECT_EQ(farthestPart(mix, {0.25, 0.75, 0.5}), 0.0);
}

TEST(CanvasFill, covers_parts_of_pixels) {
    Canvas canvas(4, 3, {0, 0, 0}, 1.0);
    canvas.fill(0.5, 1.0, 3.0, 2.0, {1, 1, 1});
    EXPECT_EQ(pixelOf(canvas, 0, 1), (Pixel{128, 128, 128, 255}));
    EXPECT_EQ(pixelOf(canvas, 1, 1), (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(pixelOf(canvas, 2, 1), (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(pixelOf(canvas, 3, 1), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(pixelOf(canvas, 1, 0), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(pixelOf(canvas, 1, 2), (Pixel{0, 0, 0, 255}));
}

TEST(CanvasBlend, on_nothing_keeps_the_colour) {
    Canvas canvas(2, 1, {0, 0, 0}, 0.0);
    canvas.blend(0, 0, {1.0, 0.0, 0.0}, 0.4);
    EXPECT_EQ(pixelOf(canvas, 0, 0), (Pixel{255, 0, 0, 102}));
    // 0.5 blue over 0.4 red: 0.7 in all, of which 0.5 / 0.7 blue and 0.2 / 0.7 red.
    canvas.blend(0, 0, {0.0, 0.0, 1.0}, 0.5);
    EXPECT_EQ(pixelOf(canvas, 0, 0), (Pixel{73, 0, 182, 179}));
    EXPECT_EQ(pixelOf(canvas, 1, 0), (Pixel{0, 0, 0, 0}));
}

TEST(CanvasBlend, outside_does_nothing) {
    Canvas canvas(2, 2, {0, 0, 0}, 1.0);
    const auto before = canvas.bytes();
    for (const int far : {-1, 2}) {
        canvas.blend(far, 0, {1, 1, 1}, 1.0);
        canvas.blend(0, far, {1, 1, 1}, 1.0);
    }
    EXPECT_EQ(canvas.bytes(), before);
}

TEST(CanvasStroke, is_as_wide_as_asked_and_round_at_its_ends) {
    Canvas canvas(20, 9, {0, 0, 0}, 1.0);
    canvas.stroke(5.0, 4.5, 15.0, 4.5, 3.0, {1, 1, 1});
    for (int y = 0; y < 9; ++y) {
        const bool within = y >= 3 && y <= 5;
        EXPECT_EQ(pixelOf(canvas, 10, y)[0], within ? 255 : 0) << y;
    }
    EXPECT_EQ(pixelOf(canvas, 4, 4)[0], 255);
    EXPECT_EQ(pixelOf(canvas, 3, 4)[0], 128);  // its middle is 1.5 from the end
    EXPECT_EQ(pixelOf(canvas, 3, 3)[0], 50);   // sqrt(1.5^2 + 1) from the end: round
    EXPECT_EQ(pixelOf(canvas, 2, 4)[0], 0);
}

}  // namespace weldline::test
