#include <functional>

#include "FaceKinds.h"
#include "NumericsTest.h"

// The order in which the face kinds of one cell enter its sums, for every operation. Cell 1 gets
// faces that contribute 2^53, -2^53 and 1 to one sum: the sum is 1 when the 1 comes last and 0 when
// it comes first or in between.

namespace weldline::test {

namespace {

struct Share {
    Kind kind;
    double amount;
};

// A calculator on cell 1 and the faces of `shares`; reads as "what is left of 1" in its answer.
struct Setting {
    TestHost host;
    CKVR3DWeldLine calc;
    std::vector<PlacedFace> faces;

    void bind() {
        host.finish();
        calc.setPartitionInterface(host.partition());
        calc.setKVRCom(host.communication(), host.collective());
        calc.setFlowData(host.gv(), host.mesh());
    }

    std::vector<double> slots(double value) const {
        return std::vector<double>(static_cast<std::size_t>(host.slots()) + 1, value);
    }
};

using Sum = std::function<double(const std::vector<Share>&)>;

// Areas of length 1 and the shares as values of the other sides: the mean over three faces.
double smoothingSum(const std::vector<Share>& shares) {
    Setting s;
    s.host.addCell({0, 0, 0}, 1.0, {});
    for (const Share& share : shares)
        s.faces.push_back(placeFace(s.host, share.kind, 1, {1, 0, 0}, {1, 0, 0}));
    s.bind();
    std::vector<double> phi = s.slots(0.0);
    for (std::size_t i = 0; i < shares.size(); ++i)
        phi[otherSlot(s.host, s.faces[i])] = shares[i].amount;
    s.calc.Smooth_Variable(phi.data(), 1);
    return 3.0 * phi[1];
}

using Scheme = std::function<void(CKVR3DWeldLine&, double*, double*, double*, double*)>;

// All values 1 and the shares as areas; volumes are 1.
double gradientSum(const Scheme& scheme, const std::vector<Share>& shares) {
    Setting s;
    s.host.addCell({0, 0, 0}, 1.0, {});
    rbfRows() = RbfRows{};
    for (const Share& share : shares)
        s.faces.push_back(placeFace(s.host, share.kind, 1, {0, share.amount, 0}, {1, 0, 0}));
    s.bind();
    std::vector<double> phi = s.slots(1.0), x = phi, y = phi, z = phi;
    scheme(s.calc, phi.data(), x.data(), y.data(), z.data());
    return y[1];
}

double defaultSum(const std::vector<Share>& shares) {
    return gradientSum([](CKVR3DWeldLine& calc, double* phi, double* x, double* y,
                          double* z) { calc.GradVarb(1, phi, x, y, z); },
                       shares);
}

double upwindSum(const std::vector<Share>& shares) {
    return gradientSum([](CKVR3DWeldLine& calc, double* phi, double* x, double* y,
                          double* z) { calc.GradVarb_Upwind(phi, x, y, z); },
                       shares);
}

double rbfSum(const std::vector<Share>& shares) {
    return gradientSum([](CKVR3DWeldLine& calc, double* phi, double* x, double* y,
                          double* z) { calc.GradVarb_RBF(phi, x, y, z); },
                       shares);
}

// Offsets (1, 0, 0) and the shares as differences; symmetry faces along y and z with no difference
// make the matrix diag(3, 1, 1), so that the x component is a third of the sum.
double leastSquaresSum(const std::vector<Share>& shares) {
    Setting s;
    s.host.addCell({0, 0, 0}, 1.0, {});
    for (const Share& share : shares)
        s.faces.push_back(placeFace(s.host, share.kind, 1, {}, {1, 0, 0}));
    s.host.addBoundary(Group::Symm, 1, {}, {0, 1, 0});
    s.host.addBoundary(Group::Symm, 1, {}, {0, 0, 1});
    s.bind();
    std::vector<double> phi = s.slots(0.0), x = phi, y = phi, z = phi;
    for (std::size_t i = 0; i < shares.size(); ++i)
        phi[otherSlot(s.host, s.faces[i])] = shares[i].amount;
    s.calc.GradVarb_Iterative(phi.data(), x.data(), y.data(), z.data());
    return 3.0 * x[1];
}

void expectOrder(const Sum& sum, const std::vector<Kind>& order) {
    for (std::size_t late = 0; late < order.size(); ++late) {
        SCOPED_TRACE(nameOf(order[late]));
        for (std::size_t early = 0; early < late; ++early) {
            SCOPED_TRACE(nameOf(order[early]));
            const Kind first = order[early], second = order[late];
            EXPECT_EQ(sum({{second, 1.0}, {first, big}, {first, -big}}), 1.0);
            EXPECT_EQ(sum({{second, big}, {second, -big}, {first, 1.0}}), 0.0);
        }
        // Within a kind the faces come in ascending number.
        const Kind kind = order[late];
        EXPECT_EQ(sum({{kind, 1.0}, {kind, big}, {kind, -big}}), 0.0);
        EXPECT_EQ(sum({{kind, big}, {kind, -big}, {kind, 1.0}}), 1.0);
        EXPECT_EQ(sum({{kind, big}, {kind, 1.0}, {kind, -big}}), 0.0);
    }
}

TEST(FaceOrder, smoothing) {
    expectOrder(smoothingSum, {Kind::Inner, Kind::Interface, Kind::Inlet, Kind::Symm, Kind::Wall});
}

TEST(FaceOrder, default_gradient) {
    expectOrder(defaultSum, {Kind::Inner, Kind::Interface, Kind::Inlet, Kind::Symm, Kind::Wall});
}

TEST(FaceOrder, upwind_gradient) {
    expectOrder(upwindSum, {Kind::Inner, Kind::Wall, Kind::Inlet, Kind::Symm, Kind::Interface});
}

TEST(FaceOrder, rbf_gradient) {
    expectOrder(rbfSum, {Kind::Inner, Kind::Wall, Kind::Inlet, Kind::Symm, Kind::Interface});
}

TEST(FaceOrder, least_squares_gradient) {
    expectOrder(leastSquaresSum,
                {Kind::Inner, Kind::Interface, Kind::Inlet, Kind::Wall, Kind::Symm});
}

}  // namespace

}  // namespace weldline::test
