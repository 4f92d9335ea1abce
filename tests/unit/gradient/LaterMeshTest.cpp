// A later mesh with fewer slots than the arrays of the host: faces that reach beyond the slots are
// left out, the faces behind them in the lists are not, and what lies beyond is not written.

#include <string>
#include <vector>

#include "OperationCase.h"

namespace weldline::test {

namespace {

constexpr Group kGroups[] = {Group::Wall, Group::Inlet, Group::Symm};
constexpr double kBeyond = 1000.0;

//   +-----+-----+- - -+
//   |  1  |  2  |  3        the mesh has the cells and slots 1 and 2; faces of every kind between
//   +-----+-----+- - -+     them, each kind led, where asked for, by a face that reaches beyond
class LaterMesh : public testing::TestWithParam<Operation> {
  protected:
    struct Outcome {
        std::vector<double> phi;
        Vectors g;
    };

    enum class Leading { None, Beyond, Zero };  // faces that reach beyond the slots, or to slot 0

    static Outcome calculate(Leading leading) {
        TestHost host;
        for (int c = 0; c < 3; ++c) host.addCell({1.0 * c, 0.5 * c, 0.25 * c * c}, 1.0 + c, {});
        // The upwind scheme reads no boundary slot, only the own cells of boundary faces.
        const bool readsBoundarySlots = GetParam().name != std::string("Upwind");
        if (leading != Leading::None) addFaces(host, 3, readsBoundarySlots ? 1 : 3);
        addFaces(host, 2, 1);
        host.finish();
        CKVR3DWeldLine calc;
        calc.setPartitionInterface(host.partition());
        calc.setKVRCom(host.communication(), host.collective());
        calc.setFlowData(host.gv(), host.mesh());
        bendLastFacesToSlot2(host);
        if (leading == Leading::Zero) bendFirstFacesToSlot0(host, readsBoundarySlots);
        calc.m_nCV = calc.m_nCV_Total = 2;
        const std::vector<double> beyond(static_cast<std::size_t>(host.slots()) + 1, kBeyond);
        Outcome outcome{beyond, {beyond, beyond, beyond}};
        outcome.phi[1] = 3.0;
        outcome.phi[2] = 5.0;
        GetParam().run(calc, outcome.phi.data(), outcome.g);
        return outcome;
    }

  private:
    // A face of every kind: an inner one from cell 1 to `other`, an interface one of cell 1, and
    // boundary ones of `boundaryCell`.
    static void addFaces(TestHost& host, int other, int boundaryCell) {
        const double size = other;
        host.addInner(1, other, {size, 0.5, 0.25}, {0.5, 0.25, 0}, 0.25);
        host.addInterface(1, {0.5, size, 0.75}, {0, 0.5, 0}, 0.25, {0, 1, size}, 1.0, {});
        for (const Group group : kGroups)
            host.addBoundary(group, boundaryCell, {0.25, 0.5, size}, {-0.5, 0.125, size});
    }

    static void bendLastFacesToSlot2(TestHost& host) {
        CPartitionFace_DLL& partition = *host.partition();
        partition.ijPar()[partition.NParInterFace()] = 2;
        CKVR3DFiniteVolumeMesh& mesh = *host.mesh();
        mesh.m_pWallFaceBnd[mesh.m_nWallFace] = 2;
        mesh.m_pInletFaceBnd[mesh.m_nInletFace] = 2;
        mesh.m_pSymmFaceBnd[mesh.m_nSymmFace] = 2;
    }

    static void bendFirstFacesToSlot0(TestHost& host, bool boundarySlots) {
        CKVR3DFiniteVolumeMesh& m = *host.mesh();
        m.m_ppInnerFace[1][2] = 0.0;
        host.partition()->ijPar()[1] = 0;
        if (boundarySlots) {
            m.m_pWallFaceBnd[1] = m.m_pInletFaceBnd[1] = m.m_pSymmFaceBnd[1] = 0;
        } else {
            m.m_pWallFaceCV[1] = m.m_pInletFaceCV[1] = m.m_pSymmFaceCV[1] = 0;
        }
    }
};

void expectFirstTwo(const std::vector<double>& expected, const std::vector<double>& actual) {
    for (const int slot : {1, 2}) {
        EXPECT_TRUE(sameBits(expected[slot], actual[slot]))
            << slot << ": " << expected[slot] << " " << actual[slot];
    }
    for (std::size_t slot = 3; slot < actual.size(); ++slot)
        EXPECT_EQ(actual[slot], kBeyond) << slot;
}

}  // namespace

TEST_P(LaterMesh, faces_beyond_the_slots_count_as_if_they_were_not_there) {
    const Outcome without = calculate(Leading::None);
    for (const Leading leading : {Leading::Beyond, Leading::Zero}) {
        const Outcome with = calculate(leading);
        expectFirstTwo(without.phi, with.phi);
        expectFirstTwo(without.g.x, with.g.x);
        expectFirstTwo(without.g.y, with.g.y);
        expectFirstTwo(without.g.z, with.g.z);
    }
}

INSTANTIATE_TEST_SUITE_P(All, LaterMesh, testing::ValuesIn(kOperations), operationName);

}  // namespace weldline::test
