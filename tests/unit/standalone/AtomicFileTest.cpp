// Files that appear whole or not at all.
#include "base/AtomicFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

#include "base/Errors.h"

namespace weldline::test {
namespace {

namespace fs = std::filesystem;

// A folder of its own, removed at the end.
class AtomicFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::temp_directory_path() /
                  ("atomic-" + std::string(test->name()) + "-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    static std::string content(const std::string& file) {
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }

    std::size_t fileCount() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    static std::string reason(const std::string& file) {
        try {
            writeWholeFile(file, "text");
            return "";
        } catch (const RunError& error) {
            return error.what();
        }
    }

    fs::path folder_;
};

TEST_F(AtomicFiles, appearsByCommit) {
    AtomicFile file(path("a"));
    file.write("one ");
    file.write("two");
    EXPECT_FALSE(fs::exists(path("a")));
    EXPECT_EQ(fs::path(file.path()).parent_path(), folder_);
    file.commit();
    EXPECT_EQ(content(path("a")), "one two");
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AtomicFiles, withoutCommitTheOldFileStays) {
    writeWholeFile(path("a"), "old");
    {
        AtomicFile file(path("a"));
        file.write("new");
    }
    EXPECT_EQ(content(path("a")), "old");
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AtomicFiles, replacesAndKeepsPermissions) {
    writeWholeFile(path("a"), "old");
    fs::permissions(path("a"), fs::perms::owner_read | fs::perms::owner_write);
    writeWholeFile(path("a"), "new");
    EXPECT_EQ(content(path("a")), "new");
    EXPECT_EQ(fs::status(path("a")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AtomicFiles, followsASymbolicLink) {
    writeWholeFile(path("real"), "old");
    fs::create_symlink("real", path("link"));
    writeWholeFile(path("link"), "new");
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_EQ(content(path("real")), "new");
}

TEST_F(AtomicFiles, missingFolder) {
    EXPECT_EQ(reason(path("no/a")), "cannot write '" + path("no/a") + "': the folder '" +
                                        path("no") + "' does not exist; create it first");
}

TEST_F(AtomicFiles, folderInsteadOfFile) {
    EXPECT_EQ(reason(path("")), "cannot write '" + path("") + "': it is a folder; name a file");
}

TEST_F(AtomicFiles, devicesAreWrittenDirectly) {
    EXPECT_EQ(reason("/dev/null"), "");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(reason("/dev/full"), "cannot write '/dev/full': No space left on device");
}

TEST_F(AtomicFiles, pipesAreWrittenDirectly) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    const int reader = ::open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    writeWholeFile(path("pipe"), "text");
    char bytes[8] = {};
    EXPECT_EQ(::read(reader, bytes, sizeof bytes), 4);
    EXPECT_STREQ(bytes, "text");
    ::close(reader);
    EXPECT_TRUE(fs::is_fifo(path("pipe")));
}

// A limit on the file size stands for a disk that becomes full half-way.
TEST_F(AtomicFiles, fullDiskLeavesNothing) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 1000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    std::string message;
    try {
        writeWholeFile(path("a"), std::string(4000, 'x'));
    } catch (const RunError& error) {
        message = error.what();
    }
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(message, "cannot write '" + path("a") + "': File too large");
    EXPECT_EQ(fileCount(), 0U);
}

TEST_F(AtomicFiles, pendingFilesAreRemovedAtOnce) {
    AtomicFile first(path("a"));
    AtomicFile second(path("b"));
    writeWholeFile(path("c"), "done");
    EXPECT_EQ(fileCount(), 3U);
    removePendingFiles();
    EXPECT_EQ(fileCount(), 1U);
    EXPECT_EQ(content(path("c")), "done");
}

// More files at a time than the registry has places: all are still removed in the end.
TEST_F(AtomicFiles, manyAtATime) {
    {
        std::vector<std::unique_ptr<AtomicFile>> files;
        for (int i = 0; i < 40; ++i) {
            files.push_back(std::make_unique<AtomicFile>(path(std::to_string(i))));
        }
        EXPECT_EQ(fileCount(), 40U);
    }
    EXPECT_EQ(fileCount(), 0U);
}

}  // namespace
}  // namespace weldline::test
