#include <gtest/gtest.h>

#include <string>

#include "Rig.h"

namespace weldline::test {

namespace {

std::string nameFor(Rig& rig, const std::string& path) {
    rig.host.gv()->m_pMeshFilePath = path.c_str();
    rig.bind();
    return rig.calculator.m_MeshFileName;
}

}  // namespace

TEST(MeshFileName, first_q7f_becomes_q7p) {
    Rig rig;
    EXPECT_EQ(nameFor(rig, "part.q7f"), "part.q7p");
    EXPECT_EQ(nameFor(rig, "part.q7f.q7f"), "part.q7p.q7f");
    EXPECT_EQ(nameFor(rig, "dir.q7f/part.q7f"), "dir.q7p/part.q7f");
    EXPECT_EQ(nameFor(rig, ".q7f"), ".q7p");
    EXPECT_EQ(nameFor(rig, "part.q7form"), "part.q7porm");
}

TEST(MeshFileName, other_paths_are_copied_unchanged) {
    Rig rig;
    for (const char* path : {"part.mesh", "part.Q7F", "part.q7", "partq7f", "part.q7p"})
        EXPECT_EQ(nameFor(rig, path), path);
}

TEST(MeshFileName, paths_of_fewer_than_four_characters_are_copied_unchanged) {
    Rig rig;
    for (const char* path : {"", ".", "q7f", ".q7"}) EXPECT_EQ(nameFor(rig, path), path);
}

TEST(MeshFileName, a_shorter_path_replaces_a_longer_one_whole) {
    Rig rig;
    nameFor(rig, std::string(500, 'a') + ".q7f");
    EXPECT_EQ(nameFor(rig, "b.q7f"), "b.q7p");
}

TEST(MeshFileName, the_longest_path_that_fits_is_kept_whole) {
    Rig rig;
    const std::string path = std::string(1019, 'a') + ".q7f";
    EXPECT_EQ(nameFor(rig, path), std::string(1019, 'a') + ".q7p");
}

TEST(MeshFileName, a_longer_path_is_cut_and_terminated) {
    Rig rig;
    EXPECT_EQ(nameFor(rig, std::string(1024, 'a')), std::string(1023, 'a'));
    EXPECT_EQ(nameFor(rig, std::string(5000, 'a')), std::string(1023, 'a'));
    EXPECT_EQ(rig.calculator.m_DebugFileName[0], '\0');
}

TEST(MeshFileName, the_ending_is_replaced_before_the_cut) {
    Rig rig;
    EXPECT_EQ(nameFor(rig, "part.q7f/" + std::string(2000, 'b')),
              "part.q7p/" + std::string(1014, 'b'));
    EXPECT_EQ(nameFor(rig, std::string(1019, 'a') + ".q7form"), std::string(1019, 'a') + ".q7p");
}

}  // namespace weldline::test
