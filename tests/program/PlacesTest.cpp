#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "ProgramTest.h"

// Where results go: names, links, permissions, what others left.

namespace weldline::test {

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class Places : public ProgramTest {
  protected:
    std::string part() const { return write("part.vtu", plateWithTwoFronts(4, 1, 2)); }

    void expectResult(const std::string& file) const {
        const Outcome outcome = weldline({"analyze", part(), "-o", file});
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        EXPECT_TRUE(isResult(file)) << file;
    }

    static bool isResult(const std::string& file) {
        return contains(read(file), "\"MeetingAngle\"");
    }

    static mode_t modeOf(const std::string& file) {
        struct stat status {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
        return status.st_mode & 07777;
    }
};

TEST_F(Places, new_files_have_the_permissions_of_the_umask) {
    const mode_t before = ::umask(027);
    expectResult(at("result.vtu"));
    ::umask(before);
    EXPECT_EQ(modeOf(at("result.vtu")), 0640u);
    EXPECT_EQ(modeOf(at("result.cmp")), 0640u);
}

TEST_F(Places, a_replaced_file_keeps_permissions_and_owner) {
    write("result.vtu", std::string("old"));
    ASSERT_EQ(::chmod(at("result.vtu").c_str(), 0604), 0);
    // Only a privileged user can give a file away; for others the owner is their own.
    [[maybe_unused]] const int given = ::chown(at("result.vtu").c_str(), 4711, 4712);
    struct stat before {};
    ASSERT_EQ(::stat(at("result.vtu").c_str(), &before), 0);
    expectResult(at("result.vtu"));
    struct stat after {};
    ASSERT_EQ(::stat(at("result.vtu").c_str(), &after), 0);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST_F(Places, a_link_stays_a_link) {
    fs::create_directory(at("real"));
    write("real/other.vtu", std::string("old"));
    fs::create_symlink("real/other.vtu", at("result.vtu"));
    expectResult(at("result.vtu"));
    EXPECT_TRUE(fs::is_symlink(at("result.vtu")));
    EXPECT_TRUE(isResult(at("real/other.vtu")));
}

// A chain of links, relative to their folders, that ends where no file is yet.
TEST_F(Places, a_link_to_a_file_that_does_not_exist_yet) {
    fs::create_directory(at("real"));
    fs::create_symlink("second.vtu", at("real/first.vtu"));
    fs::create_symlink("real/first.vtu", at("result.vtu"));
    expectResult(at("result.vtu"));
    EXPECT_TRUE(fs::is_symlink(at("result.vtu")));
    EXPECT_TRUE(fs::is_symlink(at("real/first.vtu")));
    EXPECT_TRUE(fs::is_regular_file(at("real/second.vtu")));
}

TEST_F(Places, a_link_to_itself) {
    fs::create_symlink("result.vtu", at("result.vtu"));
    expectError(weldline({"analyze", part(), "-o", at("result.vtu")}), 1,
                {"result.vtu", "symbolic links"});
    EXPECT_TRUE(fs::is_symlink(at("result.vtu")));
}

// A file that appears whole must be a new file: other names of the old one keep what they had.
TEST_F(Places, keeps_old_content_under_other_hard_links) {
    write("result.vtu", std::string("old"));
    fs::create_hard_link(at("result.vtu"), at("other.vtu"));
    expectResult(at("result.vtu"));
    EXPECT_EQ(read(at("other.vtu")), "old");
}

TEST_F(Places, names_with_blanks_line_breaks_and_other_letters) {
    for (const char* name : {"a b.vtu", "a\nb.vtu", "größe.vtu", "-o.vtu", "'\".vtu"})
        expectResult(at(name));
}

TEST_F(Places, an_error_about_a_name_with_a_line_break_is_one_line) {
    expectError(weldline({"analyze", at("a\nb.vtu")}), 3, {"a b.vtu", "no such file"});
}

// The temporary beside it has to have a shorter name than "." + name + numbers.
TEST_F(Places, the_longest_name) {
    expectResult(at(std::string(251, 'x') + ".vtu"));
    expectError(weldline({"analyze", part(), "-o", at(std::string(252, 'x') + ".vtu")}), 1,
                {"xxx.vtu", "File name too long"});
}

TEST_F(Places, a_path_beyond_all_limits) {
    std::string path = at("");
    for (int i = 0; i < 3000; ++i) path += "./";
    expectError(weldline({"analyze", part(), "-o", path + "r.vtu"}), 1, {"r.vtu", "too long"});
    expectError(weldline({"info", path + "r.vtu"}), 3, {"r.vtu"});
}

TEST_F(Places, a_folder_with_a_file_in_its_path) {
    expectError(weldline({"analyze", part(), "-o", at("part.vtu/result.vtu")}), 1,
                {"part.vtu/result.vtu", "Not a directory"});
}

TEST_F(Places, standard_output_by_its_name) {
    const std::string file = part();
    const std::string expected = weldline({"analyze", file, "--json", "-"}).out;
    for (const char* name : {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"})
        EXPECT_EQ(weldline({"analyze", file, "--json", name}).out, expected) << name;
    Setting setting;
    setting.standardOutput = at("out.json");
    EXPECT_EQ(weldline({"analyze", file, "--json", "/dev/stdout"}, setting).exitCode, 0);
    EXPECT_EQ(read(at("out.json")), expected);
}

TEST_F(Places, json_in_place_of_a_file_of_the_case) {
    fs::create_directories(at("case/constant/polyMesh"));
    fs::create_directories(at("case/0.5"));
    write("case/part.foam", std::string());
    write("case/notes", std::string("mine"));
    for (const char* file : {"case/constant/polyMesh/points", "case/0.5/fillTime"}) {
        write(file, std::string("mesh"));
        expectError(weldline({"info", at("case/part.foam"), "--json", at(file)}), 2,
                    {file, "input"});
        EXPECT_EQ(read(at(file)), "mesh");
    }
}

// Temporaries of runs that were killed: ".NAME.PROCESS-ATTEMPT.tmp" without a lock. One with a lock
// belongs to a run that goes on; other names are of others.
TEST_F(Places, left_temporaries_are_removed_and_nothing_else) {
    const Names others{".result.vtu.12-x.tmp", ".result.vtu.tmp", ".other.vtu.12-0.tmp",
                       "result.vtu.12-0.tmp", ".result.vtu.12-0.tmp.bak"};
    for (const std::string& name : others) write(name, std::string("other"));
    write(".result.vtu.12-0.tmp", std::string("left"));
    write(".result.cmp.4194303-17.tmp", std::string("left"));
    const std::string held = write(".result.vtu.13-0.tmp", std::string("held"));
    const int descriptor = ::open(held.c_str(), O_WRONLY | O_CLOEXEC);
    struct flock lock {};
    lock.l_type = F_WRLCK;
    ASSERT_EQ(::fcntl(descriptor, F_OFD_SETLK, &lock), 0);
    expectResult(at("result.vtu"));
    ::close(descriptor);
    for (const std::string& name : others) EXPECT_TRUE(fs::exists(at(name))) << name;
    EXPECT_FALSE(fs::exists(at(".result.vtu.12-0.tmp")));
    EXPECT_FALSE(fs::exists(at(".result.cmp.4194303-17.tmp")));
    EXPECT_TRUE(fs::exists(held));
}

// The same for private folders; one that holds something else stays, with that. Folders that users
// make for results are never touched, whatever they are called and hold.
TEST_F(Places, left_private_folders_are_removed_and_nothing_else) {
    const fs::path place = temporariesFolder();
    const auto make = [&](const char* name, const char* file) {
        fs::create_directory(place / name);
        std::ofstream(place / name / file) << "text";
    };
    make(".weldline-run-left00", "weldline.cmp");
    make(".weldline-run-left00", "weldline_KVRWDLineDebug.txt");
    make(".weldline-run-left01", ".weldline.cmp.12-0.tmp");
    make(".weldline-run-held00", "weldline.cmp");
    make(".weldline-run-other0", "weldline.vtu");
    make(".weldline-run-longer00", "weldline.cmp");
    make("weldline-result", "weldline.vtu");
    make("weldline-result", "weldline.cmp");
    const int held = ::open((place / ".weldline-run-held00").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    expectResult(at("result.vtu"));
    ::close(held);
    EXPECT_EQ(temporaries(), (Names{".weldline-run-held00", ".weldline-run-longer00",
                                    ".weldline-run-other0", "weldline-result"}));
    EXPECT_TRUE(fs::exists(place / ".weldline-run-other0" / "weldline.vtu"));
    EXPECT_TRUE(fs::exists(place / "weldline-result" / "weldline.vtu"));
    EXPECT_TRUE(fs::exists(place / "weldline-result" / "weldline.cmp"));
}

}  // namespace

}  // namespace weldline::test
