#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <new>
#include <stdexcept>

#include "GridMesh.h"
#include "base/Errors.h"
#include "mesh/FvMesh.h"
#include "render/ChildProcess.h"
#include "render/CornerNormals.h"
#include "render/Lettering.h"

namespace weldline::test {

namespace {

std::string errorOf(const std::function<std::string()>& work) {
    try {
        bytesFromChild(work);
    } catch (const RunError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(CornerNormals, stay_apart_at_the_edges_of_a_block) {
    const Skin skin = skinOf(buildFvMesh(hexahedraMesh(2, 2, 2)), std::vector<float>(8, 1.0F));
    const auto normals = cornerNormals(skin);
    ASSERT_EQ(normals.size(), skin.triangles.size());
    for (std::size_t t = 0; t < normals.size(); ++t) {
        const auto& [a, b, c] = skin.triangles[t];
        const Vec3 area = cross(skin.points[b] - skin.points[a], skin.points[c] - skin.points[a]);
        for (const Vec3 normal : normals[t])
            EXPECT_NEAR(norm(normal - (1.0 / norm(area)) * area), 0.0, 1e-12);
    }
}

// Two squares of equal area that meet at 20 degrees along the y axis, one of them level: at their
// common edge both have the mean normal, 10 degrees from the vertical.
TEST(CornerNormals, are_means_where_the_skin_bends_gently) {
    const double angle = 20.0 * 3.14159265358979323846 / 180.0;
    Skin skin;
    skin.points = {{-1, 0, 0},
                   {0, 0, 0},
                   {0, 1, 0},
                   {-1, 1, 0},
                   {std::cos(angle), 0, -std::sin(angle)},
                   {std::cos(angle), 1, -std::sin(angle)}};
    skin.triangles = {{0, 1, 2}, {0, 2, 3}, {1, 4, 2}, {4, 5, 2}};
    const auto normals = cornerNormals(skin);
    // Point 0 belongs to the level square alone.
    EXPECT_NEAR(normals[0][0].z, 1.0, 1e-12);
    // Point 1: half a level square, half of the other.
    EXPECT_NEAR(normals[0][1].x, std::sin(angle / 2), 1e-12);
    EXPECT_NEAR(normals[2][0].x, std::sin(angle / 2), 1e-12);
    EXPECT_NEAR(normals[3][0].x, std::sin(angle), 1e-12);
}

TEST(CornerNormals, of_a_triangle_without_area_are_zero) {
    Skin skin;
    skin.points = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    skin.triangles = {{0, 1, 2}};
    EXPECT_EQ(norm(cornerNormals(skin)[0][0]), 0.0);
}

TEST(Printable, keeps_letters_and_replaces_the_rest) {
    EXPECT_EQ(printable("Gehäuse_5 µm €.vtu"), "Gehäuse_5 µm €.vtu");
    EXPECT_EQ(printable("a\nb\x7f"), "a?b?");
    EXPECT_EQ(printable("a\xff\x62"), "a?b");
    EXPECT_EQ(printable("a\xc3"), "a?");
    EXPECT_EQ(printable("\xc3(\xa4"), "?(?");
}

TEST(ChildProcess, sends_any_bytes_back) {
    const std::string bytes("\0-+\n\xff", 5);
    EXPECT_EQ(bytesFromChild([&] { return bytes; }), bytes);
    EXPECT_EQ(bytesFromChild([] { return std::string(); }), "");
    const std::string many(3000000, 'x');
    EXPECT_EQ(bytesFromChild([&] { return many; }), many);
}

TEST(ChildProcess, leaves_this_process_as_it_was) {
    int value = 1;
    bytesFromChild([&] {
        value = 2;
        std::cerr << "nobody reads this\n";
        return std::string("done");
    });
    EXPECT_EQ(value, 1);
}

TEST(ChildProcess, passes_errors_on) {
    EXPECT_EQ(errorOf([]() -> std::string { throw RunError("no paper"); }), "no paper");
    EXPECT_NE(errorOf([]() -> std::string { throw std::bad_alloc(); }).find("out of memory"),
              std::string::npos);
}

TEST(ChildProcess, that_is_ended_makes_one_line) {
    const std::string error = errorOf([]() -> std::string { std::abort(); });
    EXPECT_NE(error.find("driver"), std::string::npos) << error;
    EXPECT_NE(error.find("Aborted"), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
    EXPECT_NE(errorOf([]() -> std::string { ::_exit(0); }).find("driver"), std::string::npos);
    EXPECT_NE(errorOf([]() -> std::string { std::exit(3); }).find("driver"), std::string::npos);
}

TEST(ChildProcess, ends_by_a_signal_that_this_process_holds_dear) {
    const auto before = std::signal(SIGTERM, SIG_IGN);
    const std::string error = errorOf([]() -> std::string {
        std::raise(SIGTERM);
        return "still here";
    });
    std::signal(SIGTERM, before);
    EXPECT_NE(error.find("Terminated"), std::string::npos) << error;
}

}  // namespace weldline::test
