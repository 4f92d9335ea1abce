// Results in pieces: names, and what goes when a new result comes.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "IoFiles.h"
#include "base/TemporaryName.h"
#include "io/ResultPieces.h"

namespace weldline::test {
namespace {

class ResultPieces : public FileTest {
  protected:
    bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
};

TEST_F(ResultPieces, areNamedByResultKeyAndRank) {
    EXPECT_EQ(pieceName("out/r.pvtu", 0xabc, 12), "out/r_0000000000000abc_12.vtu");
    EXPECT_EQ(pieceName("r.pvtu", 0xabc, 0), "r_0000000000000abc_0.vtu");
    EXPECT_TRUE(isPieceName("out/r.pvtu", "r_0000000000000abc_12.vtu"));
    for (const char* other :
         {"r_0000000000000abc_.vtu", "r_0000000000000ABC_1.vtu", "r_000000000000abc_1.vtu",
          "q_0000000000000abc_1.vtu", "r_0000000000000abc_1.vtk", "r_0000000000000abc_x.vtu",
          "r_notes_1.vtu", "r_.vtu"}) {
        EXPECT_FALSE(isPieceName("out/r.pvtu", other)) << other;
    }
}

TEST_F(ResultPieces, keyDependsOnEveryByteAndOnTheirOrder) {
    const std::string bytes = "a result of some length";
    EXPECT_EQ(contentKey(bytes), contentKey(std::string(bytes)));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string other = bytes;
        other[i] = static_cast<char>(other[i] ^ 1);
        EXPECT_NE(contentKey(bytes), contentKey(other)) << i;
    }
    EXPECT_NE(contentKey(bytes), contentKey(bytes + '\0'));
    EXPECT_NE(keyOfAll({1, 2}), keyOfAll({2, 1}));
    EXPECT_NE(keyOfAll({1}), keyOfAll({1, 1}));
}

TEST_F(ResultPieces, areListedInTheFile) {
    const std::string text = piecesText("a&b.pvtu", 1, 2);
    EXPECT_NE(text.find("Source=\"a&amp;b_0000000000000001_0.vtu\""), std::string::npos);
    EXPECT_NE(text.find("Source=\"a&amp;b_0000000000000001_1.vtu\""), std::string::npos);
    EXPECT_EQ(text.find("_2.vtu"), std::string::npos);
}

TEST_F(ResultPieces, ofEarlierResultsAndKilledRunsGo) {
    const std::string result = put("r.pvtu", piecesText("r.pvtu", 2, 1));
    for (const char* name :
         {"r_0000000000000001_0.vtu", "r_0000000000000001_1.vtu", "r_0000000000000002_0.vtu",
          ".r_0000000000000003_0.vtu.123-0.tmp", ".r_notes.vtu.123-0.tmp", "r_notes.vtu"}) {
        put(name, "");
    }
    removeOlderPieces(result, 2, 1);
    EXPECT_FALSE(exists("r_0000000000000001_0.vtu"));
    EXPECT_FALSE(exists("r_0000000000000001_1.vtu"));
    EXPECT_FALSE(exists(".r_0000000000000003_0.vtu.123-0.tmp"));
    EXPECT_TRUE(exists("r_0000000000000002_0.vtu"));
    EXPECT_TRUE(exists(".r_notes.vtu.123-0.tmp"));
    EXPECT_TRUE(exists("r_notes.vtu"));
}

TEST_F(ResultPieces, stayWhereAnotherRunIsWritingOrCameFirst) {
    const std::string result = put("r.pvtu", piecesText("r.pvtu", 1, 1));
    put("r_0000000000000001_0.vtu", "");
    removeOlderPieces(result, 2, 1);  // the result there is another one
    EXPECT_TRUE(exists("r_0000000000000001_0.vtu"));

    put("r.pvtu", piecesText("r.pvtu", 2, 1));
    const std::string temporary = temporaryName(result, 7);
    put(std::filesystem::path(temporary).filename().string(), "");
    const int held = ::open(temporary.c_str(), O_RDWR);
    ASSERT_TRUE(lockTemporary(held));
    EXPECT_TRUE(isBeingWritten(result));
    removeOlderPieces(result, 2, 1);
    EXPECT_TRUE(exists("r_0000000000000001_0.vtu"));
    ::close(held);
    EXPECT_FALSE(isBeingWritten(result));
    removeOlderPieces(result, 2, 1);
    EXPECT_FALSE(exists("r_0000000000000001_0.vtu"));
}

TEST(TemporaryNames, tellTheirTarget) {
    EXPECT_EQ(targetOfTemporary(".r.vtu.12-3.tmp"), "r.vtu");
    for (const char* other :
         {"r.vtu.12-3.tmp", ".r.vtu.12.tmp", ".12-3.tmp", ".tmp", ".r.12-3.vtu"}) {
        EXPECT_EQ(targetOfTemporary(other), "") << other;
    }
}

}  // namespace
}  // namespace weldline::test
