#include <gtest/gtest.h>

#include "Outcome.h"
#include "ShakenBox.h"

// A handle that has run before against a handle that has not: what a new binding wipes out, and
// what it leaves on purpose.

namespace weldline::test {

namespace {

void expectSame(const Outcome& left, const Outcome& right) {
    EXPECT_EQ(left.angle, right.angle);
    EXPECT_EQ(left.variable, right.variable);
    EXPECT_EQ(left.gradient, right.gradient);
    EXPECT_EQ(left.flatFlag, right.flatFlag);
}

// The boundary angle is the one setting that methods 1 to 3 change, so it is given anew.
std::string repeatable(const Choice& choice) {
    return settings(choice.method, choice.gradientMethod, {"BoundaryAngle = 75"});
}

struct ShakenHost : TestHost {
    ShakenHost() { addShakenBox(*this); }
};

}  // namespace

TEST(Repetition, after_binding_again_equals_a_fresh_handle) {
    for (const Choice& choice : everyChoice()) {
        SCOPED_TRACE(inWords(choice));
        ShakenHost host;
        host.gradSetSwitch = choice.gradSetSwitch;
        CKVR3DWeldLine used;
        bind(used, host);
        run(used, host, repeatable(choice));
        bind(used, host);
        const Outcome again = run(used, host, repeatable(choice));
        EXPECT_GE(again.nodesBelow180(), 5);
        expectSame(again, freshRun(host, repeatable(choice)));
    }
}

// Method, gradient scheme and values of the earlier run leave nothing behind.
TEST(Repetition, after_any_other_run_and_other_values_equals_a_fresh_handle) {
    for (const Choice& earlier : everyChoice())
        for (const Choice& choice : everyChoice()) {
            SCOPED_TRACE(inWords(earlier) + ", then " + inWords(choice));
            ShakenHost host;
            CKVR3DWeldLine used;
            for (int s = 1; s <= host.slots(); ++s) host.gv()->m_pFlowVariable[s] *= 3.0F;
            host.gradSetSwitch = earlier.gradSetSwitch;
            bind(used, host);
            run(used, host, repeatable(earlier));
            for (int s = 1; s <= host.slots(); ++s) host.gv()->m_pFlowVariable[s] *= 0.25F;
            host.gradSetSwitch = choice.gradSetSwitch;
            bind(used, host);
            expectSame(run(used, host, repeatable(choice)), freshRun(host, repeatable(choice)));
        }
}

// Without the key, the second run takes the cosine that the first one left (of 65 degrees in
// method 1, of 75 in methods 2 and 3) as degrees: a cone so narrow that fewer nodes meet.
TEST(Repetition, keeps_the_cosine_of_methods_1_to_3_beyond_a_binding) {
    for (int method = 1; method <= 3; ++method) {
        SCOPED_TRACE(method);
        ShakenHost host;
        CKVR3DWeldLine used;
        bind(used, host);
        const Outcome first = run(used, host, settings(method, 1));
        bind(used, host);
        const Outcome second = run(used, host, settings(method, 1));
        EXPECT_LT(second.nodesBelow180(), first.nodesBelow180());
        EXPECT_EQ(second.gradient, first.gradient);
        const char* cosine = method == 1 ? "0.42261826291555904" : "0.2588190465473015";
        const std::string told = settings(method, 1, {std::string("BoundaryAngle = ") + cosine});
        EXPECT_EQ(second.angle, freshRun(host, told).angle);
    }
}

// Method 4 leaves its default of 120 degrees; method 1 would have taken 65 by itself.
TEST(Repetition, keeps_the_default_boundary_angle_of_method_4_beyond_a_binding) {
    ShakenHost host;
    CKVR3DWeldLine used;
    bind(used, host);
    run(used, host, settings(4, 1));
    bind(used, host);
    const Outcome second = run(used, host, settings(1, 1));
    EXPECT_NE(second.angle, freshRun(host, settings(1, 1)).angle);
    EXPECT_EQ(second.angle, freshRun(host, settings(1, 1, {"BoundaryAngle = 120"})).angle);
}

// Without a binding the variable goes on from where it was: p passes and p more are 2p passes. The
// two cells that are not reached were zero from the start; flags of flat cells would end this.
TEST(Repetition, without_binding_goes_on_smoothing) {
    for (const Choice& choice : everyChoice()) {
        SCOPED_TRACE(inWords(choice));
        ShakenHost host;
        host.gradSetSwitch = choice.gradSetSwitch;
        const auto passes = [&](int count) {
            return settings(choice.method, choice.gradientMethod,
                            {"nSmooth_beforeGrad = " + std::to_string(count)});
        };
        CKVR3DWeldLine used;
        bind(used, host);
        run(used, host, passes(3));
        const Outcome second = run(used, host, passes(3));
        const Outcome six = freshRun(host, passes(6));
        EXPECT_EQ(second.variable, six.variable);
        EXPECT_EQ(second.gradient, six.gradient);
    }
}

// The largest angle of a node starts from the last result, not from zero: where nothing met, 180
// stands already, and 180 minus it is 0.
TEST(Repetition, keeps_the_angles_of_the_last_run_as_start) {
    ShakenHost host;
    const std::string control = settings(4, 4, {"nSmooth_beforeGrad = 0"});
    CKVR3DWeldLine used;
    bind(used, host);
    const Outcome first = run(used, host, control);
    const Outcome second = run(used, host, control);
    EXPECT_EQ(second.gradient, first.gradient);
    EXPECT_NE(second.angle, first.angle);
    int turned = 0;
    for (std::size_t n = 0; n < first.angle.size(); ++n)
        if (first.angle[n] == 180.0 && second.angle[n] == 0.0) ++turned;
    EXPECT_GT(turned, 0);
}

}  // namespace weldline::test
