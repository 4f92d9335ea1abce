#include <gtest/gtest.h>

#include "render/SheetLayout.h"

namespace weldline::test {

namespace {

bool overlap(const SheetBox& a, const SheetBox& b) {
    return a.left < b.right() && b.left < a.right() && a.top < b.bottom() && b.top < a.bottom();
}

// All boxes of a sheet that are there.
std::vector<SheetBox> boxesOf(const SheetLayout& layout) {
    std::vector<SheetBox> boxes = layout.views;
    for (const SheetBox& box :
         {layout.caption, layout.timeLegend, layout.angleLegend, layout.scaleBar})
        if (box.isThere()) boxes.push_back(box);
    return boxes;
}

}  // namespace

TEST(SheetLayout, boxes_lie_on_the_sheet_and_apart) {
    for (const auto& [width, height] :
         {std::array{1600, 1000}, {800, 500}, {6000, 4000}, {600, 1400}, {300, 300}, {16384, 400}})
        for (int views = 1; views <= 9; ++views) {
            SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height) + ", " +
                         std::to_string(views));
            const std::vector<SheetBox> boxes = boxesOf(layOut(width, height, {views, true, true}));
            ASSERT_EQ(boxes.size(), static_cast<std::size_t>(views) + 4);
            for (std::size_t i = 0; i < boxes.size(); ++i) {
                EXPECT_GE(boxes[i].left, 0);
                EXPECT_GE(boxes[i].top, 0);
                EXPECT_LE(boxes[i].right(), width);
                EXPECT_LE(boxes[i].bottom(), height);
                EXPECT_GT(boxes[i].width, 0);
                EXPECT_GT(boxes[i].height, 0);
                for (std::size_t j = 0; j < i; ++j)
                    EXPECT_FALSE(overlap(boxes[i], boxes[j])) << i << " " << j;
            }
        }
}

TEST(SheetLayout, too_small_for_text_is_one_view) {
    for (const int side : {16, 207}) {
        const SheetLayout layout = layOut(side, side, {});
        EXPECT_EQ(layout.letter, 0.0);
        EXPECT_EQ(boxesOf(layout).size(), 1U);
        EXPECT_EQ(layout.views.front().width, side);
        EXPECT_EQ(layout.views.front().height, side);
    }
    EXPECT_EQ(layOut(208, 208, {}).letter, 13.0);
}

TEST(SheetLayout, leaves_out_what_the_picture_does_not_have) {
    const SheetLayout layout = layOut(1600, 1000, {1, false, false});
    EXPECT_FALSE(layout.timeLegend.isThere());
    EXPECT_FALSE(layout.angleLegend.isThere());
    EXPECT_TRUE(layout.scaleBar.isThere());
}

TEST(SheetLayout, letters_grow_with_the_picture) {
    EXPECT_EQ(layOut(3200, 2000, {}).letter, 2 * layOut(1600, 1000, {}).letter);
}

TEST(SheetLayout, grid_is_nearly_square) {
    const auto columns = [](int width, int height, int views) {
        const std::vector<SheetBox> boxes = layOut(width, height, {views, true, true}).views;
        int inRow = 0;
        for (const SheetBox& box : boxes) inRow += box.top == boxes.front().top ? 1 : 0;
        return inRow;
    };
    EXPECT_EQ(columns(1600, 1000, 1), 1);
    EXPECT_EQ(columns(1600, 1000, 2), 2);
    EXPECT_EQ(columns(1600, 1000, 4), 2);
    EXPECT_EQ(columns(1600, 1000, 6), 3);
    EXPECT_EQ(columns(800, 2000, 2), 1);
    EXPECT_EQ(columns(800, 2000, 6), 2);
}

TEST(SheetLayout, last_row_stands_in_the_middle) {
    const std::vector<SheetBox> boxes = layOut(1600, 1000, {3, true, true}).views;
    EXPECT_EQ(boxes[0].top, boxes[1].top);
    EXPECT_GT(boxes[2].top, boxes[0].top);
    EXPECT_NEAR(boxes[2].left + 0.5 * boxes[2].width, 800.0, 1.0);
}

TEST(SheetLayout, legends_of_a_narrow_sheet_stand_one_below_the_other) {
    const SheetLayout narrow = layOut(600, 1400, {});
    EXPECT_GE(narrow.angleLegend.top, narrow.timeLegend.bottom());
    EXPECT_GE(narrow.scaleBar.top, narrow.angleLegend.bottom());
    const SheetLayout wide = layOut(1600, 1000, {});
    EXPECT_EQ(wide.angleLegend.top, wide.timeLegend.top);
    EXPECT_EQ(wide.scaleBar.top, wide.timeLegend.top);
}

}  // namespace weldline::test
