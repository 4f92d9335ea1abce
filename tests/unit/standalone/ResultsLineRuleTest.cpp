#include <gtest/gtest.h>

#include <limits>

#include "base/Errors.h"
#include "results/LineRule.h"

namespace weldline::test {

namespace {

WeldLine line() {
    WeldLine line;
    line.smallestAngle = 40.0;
    line.meanAngle = 90.0;
    line.length = 6.0;
    line.nodeCount = 12;
    line.firstTime = 1.5;
    line.lastTime = std::numeric_limits<double>::quiet_NaN();
    return line;
}

bool holds(const std::string& rule) {
    return LineRule(rule).holdsFor(line());
}

std::string problemOf(const std::string& rule) {
    try {
        const LineRule understood(rule);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "understood";
}

}  // namespace

TEST(LineRule, compares_each_quantity) {
    EXPECT_TRUE(holds("angle<40.5"));
    EXPECT_FALSE(holds("angle<40"));
    EXPECT_TRUE(holds("angle<=40"));
    EXPECT_TRUE(holds("mean>89"));
    EXPECT_FALSE(holds("mean>90"));
    EXPECT_TRUE(holds("mean>=90"));
    EXPECT_TRUE(holds("length=6"));
    EXPECT_TRUE(holds("nodes>11"));
    EXPECT_TRUE(holds("first<2"));
}

TEST(LineRule, missing_time_fulfils_nothing) {
    EXPECT_FALSE(holds("last<100"));
    EXPECT_FALSE(holds("last>=0"));
    EXPECT_FALSE(holds("last=0"));
}

TEST(LineRule, tells_weld_from_meld) {
    EXPECT_TRUE(holds("class=weld"));
    EXPECT_FALSE(holds("class = meld"));
    WeldLine meld = line();
    meld.kind = LineClass::Meld;
    EXPECT_TRUE(LineRule("class=meld").holdsFor(meld));
}

TEST(LineRule, and_binds_closer_than_or) {
    EXPECT_TRUE(holds("angle<60 & length>5"));
    EXPECT_FALSE(holds("angle<60 & length>7"));
    EXPECT_TRUE(holds("angle<60 & length>7 | nodes=12"));
    EXPECT_TRUE(holds("nodes=12 | angle<60 & length>7"));
    EXPECT_FALSE(holds("nodes=13 | angle<60 & length>7"));
}

TEST(LineRule, shows_what_it_does_not_understand) {
    EXPECT_NE(problemOf("").find("expected angle"), std::string::npos);
    EXPECT_NE(problemOf("angel<60").find("at character 1"), std::string::npos);
    EXPECT_NE(problemOf("angle 60").find("expected <"), std::string::npos);
    EXPECT_NE(problemOf("angle<").find("expected a number"), std::string::npos);
    EXPECT_NE(problemOf("angle<nan").find("expected a number"), std::string::npos);
    EXPECT_NE(problemOf("angle<60 &").find("expected angle"), std::string::npos);
    EXPECT_NE(problemOf("angle<60 length>5").find("at character 10"), std::string::npos);
    EXPECT_NE(problemOf("class<weld").find("'='"), std::string::npos);
    EXPECT_NE(problemOf("class=wild").find("weld or meld"), std::string::npos);
}

}  // namespace weldline::test
