#include <nlohmann/json.hpp>

#include "ProgramTest.h"

// Lengths in another unit than that of the data set.

namespace weldline::test {

namespace {

using Json = nlohmann::json;

class Scale : public ProgramTest {};

// Half as long: a power of two keeps every digit.
TEST_F(Scale, multiplies_lengths_alone) {
    const std::string input = write("part.vtu", plateWithTwoFronts(12, 3, 3));
    const Json one = Json::parse(weldline({"analyze", input, "--json", "-"}).out);
    const Outcome outcome = weldline(
        {"analyze", input, "--scale", "0.5", "-o", at("half.vtu"), "--json", at("h.json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_TRUE(
        contains(outcome.out, "lengths of the data set times 0.5, times as in the data set"))
        << outcome.out;
    const Json half = Json::parse(read(at("h.json")));
    EXPECT_EQ(one["input"]["scale"], 1.0);
    EXPECT_EQ(one["input"]["units"], "lengths and times as in the data set");
    EXPECT_EQ(half["input"]["scale"], 0.5);
    EXPECT_EQ(half["mesh"]["box"]["high"][0], 0.5);
    EXPECT_EQ(half["mesh"]["volume"].get<double>(), one["mesh"]["volume"].get<double>() / 8.0);
    EXPECT_EQ(half["fillTime"], one["fillTime"]);
    ASSERT_EQ(half["components"].size(), one["components"].size());
    ASSERT_GT(half["components"].size(), 0u);
    for (std::size_t i = 0; i < half["components"].size(); ++i) {
        const Json& a = one["components"][i];
        const Json& b = half["components"][i];
        EXPECT_EQ(b["smallestAngle"], a["smallestAngle"]);
        EXPECT_EQ(b["length"].get<double>(), a["length"].get<double>() / 2.0);
    }
    const Json info = Json::parse(weldline({"info", at("half.vtu"), "--json", "-"}).out);
    EXPECT_EQ(info["box"]["high"][0], 0.5);
}

TEST_F(Scale, is_a_factor_above_0) {
    for (const char* scale : {"0", "-1", "nan", "inf"})
        expectError(weldline({"analyze", "part.vtu", "--scale", scale}), 2, {"--scale", "0.001"});
}

}  // namespace

}  // namespace weldline::test
