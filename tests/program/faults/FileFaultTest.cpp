#include <cerrno>
#include <filesystem>
#include <tuple>

#include "FaultTest.h"

// Every call on a file fails in turn, with the errors that it can have. Not part of sanitizer
// builds, whose runtime does not go with another preloaded library.
//
// Left out because no failure of theirs can be seen or happen: writing to standard error (there is
// no other place to tell it), files outside of the folders of input, output and temporaries (the
// system's own, as locale and /proc), signal masks, and the start of the libraries before main.

namespace weldline::test {

namespace {

std::string number(int error) {
    return std::to_string(error);
}

class FileFaults : public FaultTest {
  protected:
    // An earlier run by another method has left all files; this one replaces them.
    void analyzeOverOldFiles() {
        const std::string part = write("part.vtu", plateWithTwoFronts(10, 2, 2));
        const Names common{"analyze", part,           "-o",    at("result.vtu"),
                           "--json",  at("sum.json"), "--set", "FlagDebugOutput=1"};
        Names earlier = common;
        earlier.insert(earlier.end(), {"--method", "2"});
        ASSERT_EQ(weldline(earlier).exitCode, 0);
        Files old = files();
        old.erase("part.vtu");
        prepare(common, old);
    }

    void expectCalls(int least, const std::vector<Fault>& faults) {
        for (const Fault& fault : faults) EXPECT_GE(failEach(fault), least) << fault.call;
    }
};

TEST_F(FileFaults, open) {
    analyzeOverOldFiles();
    expectCalls(10, {{"open", number(EACCES)}, {"open", number(EMFILE)}, {"open", number(EIO)}});
}

TEST_F(FileFaults, read) {
    analyzeOverOldFiles();
    expectCalls(5, {{"read", number(EIO)}});
}

// A single failure while the library reads its settings cannot be seen: nothing of it comes back.
// But a disk that fails once and for all is seen when the settings are read again.
TEST_F(FileFaults, read_from_there_on) {
    analyzeOverOldFiles();
    expectCalls(5, {{"read:fgets", number(EIO), true}});
}

TEST_F(FileFaults, read_in_parts_or_interrupted) {
    analyzeOverOldFiles();
    expectCalls(5, {{"read", number(EINTR)}, {"read", "short"}});
}

TEST_F(FileFaults, seek) {
    analyzeOverOldFiles();
    expectCalls(1, {{"lseek", number(EIO)}});
}

TEST_F(FileFaults, write) {
    analyzeOverOldFiles();
    expectCalls(6, {{"write", number(ENOSPC)}, {"write", number(EIO)}});
    expectCalls(6, {{"write", number(ENOSPC), true}, {"write", number(EDQUOT), true}});
}

TEST_F(FileFaults, write_in_parts_or_interrupted) {
    analyzeOverOldFiles();
    expectCalls(6, {{"write", number(EINTR)}, {"write", "short"}});
}

TEST_F(FileFaults, synchronise) {
    analyzeOverOldFiles();
    expectCalls(4, {{"fsync", number(EIO)}, {"fsync", number(ENOSPC)}, {"fsync", number(EINVAL)}});
}

TEST_F(FileFaults, close) {
    analyzeOverOldFiles();
    expectCalls(4, {{"close", number(EIO)}, {"close", number(EINTR)}});
    expectCalls(1, {{"fclose", number(ENOSPC)}});
}

TEST_F(FileFaults, rename) {
    analyzeOverOldFiles();
    expectCalls(4, {{"rename", number(EACCES)}, {"rename", number(EIO)}});
}

TEST_F(FileFaults, status) {
    analyzeOverOldFiles();
    expectCalls(10, {{"stat", number(EACCES)}, {"stat", number(EIO)}});
}

TEST_F(FileFaults, access_and_links) {
    analyzeOverOldFiles();
    expectCalls(4, {{"access", number(EACCES)}, {"realpath", number(EACCES)}});
}

TEST_F(FileFaults, permissions) {
    analyzeOverOldFiles();
    expectCalls(4, {{"fchmod", number(EPERM)}, {"fstat", number(EIO)}});
}

TEST_F(FileFaults, temporary_folder) {
    analyzeOverOldFiles();
    expectCalls(1, {{"mkdtemp", number(ENOSPC)}});
}

TEST_F(FileFaults, removal) {
    analyzeOverOldFiles();
    expectCalls(1, {{"unlink", number(EIO)}, {"rmdir", number(EIO)}});
}

TEST_F(FileFaults, descriptors) {
    analyzeOverOldFiles();
    expectCalls(1, {{"fcntl", number(EMFILE)}, {"dup2", number(EINTR)}, {"dup2", number(EBUSY)}});
}

}  // namespace

}  // namespace weldline::test
