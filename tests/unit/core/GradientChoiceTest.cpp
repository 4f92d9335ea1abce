#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Rig.h"

// The choice of gradient and meeting-angle method as a table: for each pair of settings the host
// calls in their order with the arrays exchanged, and the trace lines in their order.
//
// All rows run with 1 smoothing pass before the gradient, 2 after it and 3 gradient iterations.

namespace weldline::test {

namespace {

using Lines = std::vector<std::string>;

enum class Scheme { None, Default, Upwind, UpwindIterative, UpwindRbf };

constexpr std::optional<int> kOwnAnswer;  // AllMax answers with this process's value

struct Row {
    int method;
    int gradientMethod;
    bool singular;                    // a row of cubes without boundary: all neighbours along x
    std::optional<int> allMaxAnswer;  // what the other processes make of it
    Scheme scheme;
    bool smoothsSecondSet;
    const char* angleLine;  // empty: no meeting-angle method runs
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    stream << "method " << row.method << ", gradient method " << row.gradientMethod
           << (row.singular ? ", singular" : "");
    if (row.allMaxAnswer) stream << ", maximum " << *row.allMaxAnswer;
    return stream;
}

constexpr const char* kCellLoop = "calWeldLine: CalNodeVectorAngle_Modified_03Loop";
constexpr const char* kFaceLoop = "calWeldLine: CalNodeVectorAngle_Modified_FaceLoop";
constexpr const char* kHybrid = "calWeldLine: CalNodeVectorAngle_Modified_Hybrid";
constexpr const char* kRbf = "calWeldLine: CalNodeVectorAngle_Modified_RBF_Holvex01";

const Row kRows[] = {
    // Methods other than 4 take the default gradient, whatever the gradient method is.
    {1, 3, false, kOwnAnswer, Scheme::Default, false, kCellLoop},
    {2, 3, false, kOwnAnswer, Scheme::Default, false, kFaceLoop},
    {3, 3, false, kOwnAnswer, Scheme::Default, false, kHybrid},
    {1, 3, true, kOwnAnswer, Scheme::Default, false, kCellLoop},
    {1, 2, false, kOwnAnswer, Scheme::Default, false, kCellLoop},
    {2, 4, false, kOwnAnswer, Scheme::Default, false, kFaceLoop},
    {3, 0, false, kOwnAnswer, Scheme::Default, false, kHybrid},
    {5, 3, false, kOwnAnswer, Scheme::Default, false, ""},
    {0, 2, false, kOwnAnswer, Scheme::Default, false, ""},
    {-4, 4, false, kOwnAnswer, Scheme::Default, false, ""},
    // Method 4.
    {4, 1, false, kOwnAnswer, Scheme::Default, false, kRbf},
    {4, 2, false, kOwnAnswer, Scheme::UpwindRbf, true, kRbf},
    {4, 2, true, 0, Scheme::UpwindRbf, true, kRbf},
    {4, 3, false, kOwnAnswer, Scheme::UpwindIterative, true, kRbf},
    {4, 3, true, kOwnAnswer, Scheme::UpwindRbf, true, kRbf},
    {4, 4, false, kOwnAnswer, Scheme::Upwind, false, kRbf},
    // The maximum of all processes decides, not this process's own answer; only 1 means singular.
    {4, 3, false, 1, Scheme::UpwindRbf, true, kRbf},
    {4, 3, true, 0, Scheme::UpwindIterative, true, kRbf},
    {4, 3, true, 2, Scheme::UpwindIterative, true, kRbf},
    {4, 3, false, -1, Scheme::UpwindIterative, true, kRbf},
    // On purpose no gradient at all.
    {4, 0, false, kOwnAnswer, Scheme::None, false, kRbf},
    {4, -1, false, kOwnAnswer, Scheme::None, false, kRbf},
    {4, 5, false, kOwnAnswer, Scheme::None, false, kRbf},
    {4, -2147483647, false, kOwnAnswer, Scheme::None, false, kRbf},
    // 40 is 4 from the first line on.
    {40, 3, false, kOwnAnswer, Scheme::UpwindIterative, true, kRbf},
    {40, 4, false, kOwnAnswer, Scheme::Upwind, false, kRbf},
};

void append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Lines exchanges(const std::string& array, int count) {
    return Lines(count, "exchange " + array);
}

Lines exchangesOfSet(const std::string& set, int count) {
    Lines lines;
    for (const char* axis : {"X", "Y", "Z"}) append(lines, exchanges(set + axis, count));
    return lines;
}

Lines rbfPreparation() {
    constexpr int order[][2] = {{0, 1}, {1, 2}, {2, 3}, {4, 5}, {3, 6}};  // object and its code
    Lines lines;
    for (const auto& [object, code] : order) {
        const std::string name = "RBF" + std::to_string(object);
        append(lines, {name + " getKvr3dGV", name + " getPartitionFace",
                       name + " Initialize " + std::to_string(code)});
    }
    return lines;
}

Lines gradientCalls(const Row& row) {
    Lines lines;
    if (row.scheme == Scheme::Default) {
        // Iteration 1 is not carried over; 2 and 3 exchange the previous gradient.
        append(lines, exchangesOfSet("work", 1));
        append(lines, exchangesOfSet("work", 1));
    }
    if (row.scheme != Scheme::None) append(lines, exchangesOfSet("grad", 1));
    if ((row.method == 4 || row.method == 40) && row.gradientMethod == 3)
        lines.push_back(row.singular ? "AllMax 1" : "AllMax 0");
    if (row.scheme == Scheme::UpwindRbf) append(lines, rbfPreparation());
    if (row.scheme == Scheme::UpwindRbf || row.scheme == Scheme::UpwindIterative)
        append(lines, exchangesOfSet("grad2", 1));
    return lines;
}

Lines expectedCalls(const Row& row) {
    Lines lines = exchanges("variable", 1);
    append(lines, gradientCalls(row));
    append(lines, exchangesOfSet("grad", 2));
    if (row.smoothsSecondSet) append(lines, exchangesOfSet("grad2", 2));
    return lines;
}

Lines gradientTrace(Scheme scheme) {
    const std::string upwind = "..Start UPWIND calculation of gradients";
    switch (scheme) {
        case Scheme::None:
            return {};
        case Scheme::Default:
            return {"calWeldLine: GradVarb"};
        case Scheme::Upwind:
            return {upwind};
        case Scheme::UpwindRbf:
            return {upwind, "..Start RBF calculation of gradients"};
        case Scheme::UpwindIterative:
            break;
    }
    return {upwind,
            "..Start iterative calculation of gradients",
            "// Contribution from inner cell faces",
            "// Contribution from Inlet Boundaries",
            "// Contribution from Wall Boundaries",
            "// Contribution from Symmetry Boundaries",
            "// Calculate Gradient Components at CV-centers"};
}

Lines expectedTrace(const Row& row) {
    Lines lines{"calWeldLine: getMeshTopologyConn", "calWeldLine: getInnerCell03Conn",
                "calWeldLine: getCell32Conn", "calWeldLine: Smooth_Variable"};
    append(lines, gradientTrace(row.scheme));
    append(lines, Lines(row.smoothsSecondSet ? 6 : 3, "calWeldLine: Smooth_Variable"));
    if (*row.angleLine != '\0') append(lines, {row.angleLine, "calWeldLine: truncateAngle"});
    return lines;
}

std::optional<Group> noBoundary(Point, Point) {
    return std::nullopt;
}

class GradientChoice : public ::testing::TestWithParam<Row> {
  protected:
    GradientChoice()
        : m_rig(3, GetParam().singular ? 1 : 2, GetParam().singular ? 1 : 2,
                GetParam().singular ? noBoundary : wallEverywhere) {
        setField(m_rig.host, [](Point x) { return 1.0 + x[0] + 2.0 * x[1] + 4.0 * x[2]; });
        m_rig.bind();
        const std::optional<int> answer = GetParam().allMaxAnswer;
        if (answer) m_rig.host.allMax = [answer](int) { return *answer; };
    }

    int run() {
        return m_rig.run(section({"WeldlingAngleMethod = " + std::to_string(GetParam().method),
                                  "GradMethodMFT = " + std::to_string(GetParam().gradientMethod),
                                  "nSmooth_beforeGrad = 1", "nSmooth_afterGrad = 2", "nGrad = 3",
                                  "FlagDebugOutput = 1"}));
    }

    Rig m_rig;
};

}  // namespace

TEST_P(GradientChoice, host_calls_come_in_their_order_with_their_arrays) {
    run();
    EXPECT_EQ(m_rig.calls(), expectedCalls(GetParam()));
}

TEST_P(GradientChoice, trace_lines_come_in_their_order) {
    run();
    const Lines lines = m_rig.traceLines();
    ASSERT_GE(lines.size(), 9U);
    EXPECT_EQ(Lines(lines.begin() + 9, lines.end()), expectedTrace(GetParam()));
}

TEST_P(GradientChoice, result_is_zero_in_every_run) {
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(run(), 0);
}

TEST_P(GradientChoice, a_second_run_makes_the_same_calls) {
    run();
    callLog().clear();
    m_rig.host.exchanges.clear();
    run();
    EXPECT_EQ(m_rig.calls(), expectedCalls(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Rows, GradientChoice, ::testing::ValuesIn(kRows));

}  // namespace weldline::test
