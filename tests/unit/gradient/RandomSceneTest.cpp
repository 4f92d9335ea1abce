#include "RandomScene.h"
#include "Scene.h"

// Every operation against its naive transcription, bit by bit, on random small meshes: results in
// all slots, flags, work arrays, and the sequence of exchanges.

namespace weldline::test {

namespace {

constexpr int scenes = 300;

// One random mesh with a calculator on it and a copy of everything for the naive operation.
struct Case {
    explicit Case(int seed) : dice(static_cast<std::uint64_t>(seed) + 1), wild(seed % 4 == 3) {
        rbfRows() = RbfRows{};
        addRandomScene(host, dice);
        host.finish();
        calc.setPartitionInterface(host.partition());
        calc.setKVRCom(host.communication(), host.collective());
        calc.setFlowData(host.gv(), host.mesh());
        for (int c = 1; c <= host.slots(); ++c) {
            calc.m_pVariableOrg[c] = dice.below(3) == 0 ? dice.value() : 1.0;
            calc.m_pZeroGradFlag[c] = dice.below(8) == 0 ? 1 + dice.below(2) : 0;
            calc.m_pWork1X[c] = dice.unit();
        }
        calc.m_FaceAreaMag = dice.unit();
        scene = sceneOf(host);
        state = stateOf(calc, host.slots());
        phi = values();
        mine = naive = {values(), values(), values()};
        host.exchange = ChangingHalo(host);
    }

    std::vector<double> values() {
        std::vector<double> array(static_cast<std::size_t>(host.slots()) + 1, NaN);
        for (std::size_t c = 1; c < array.size(); ++c)
            array[c] = wild ? dice.wildValue() : dice.value();
        return array;
    }

    // The naive operation's exchange, recorded like the calculator's.
    HaloRefresh refresh() {
        return [this, halo = ChangingHalo(host)](double* array) mutable {
            recorded.emplace_back(array, array + host.slots() + 1);
            halo(array);
        };
    }

    void expectSame() const {
        EXPECT_TRUE(sameSlots(naive, mine));
        const SceneState after = stateOf(calc, host.slots());
        EXPECT_EQ(std::vector(state.zeroGradient.begin() + 1, state.zeroGradient.end()),
                  std::vector(after.zeroGradient.begin() + 1, after.zeroGradient.end()));
        EXPECT_TRUE(sameSlots(state.work, after.work));
        EXPECT_TRUE(sameSlots(state.loaded, after.loaded.data()));
        EXPECT_TRUE(sameBits(state.faceArea, after.faceArea));
        ASSERT_EQ(recorded.size(), host.exchanges.size());
        for (std::size_t i = 0; i < recorded.size(); ++i)
            EXPECT_TRUE(sameSlots(recorded[i], host.exchanges[i].before.data()))
                << "exchange " << i;
    }

    Dice dice;
    bool wild;
    TestHost host;
    CKVR3DWeldLine calc;
    Scene scene;
    SceneState state;
    std::vector<double> phi;
    Vectors mine, naive;
    std::vector<std::vector<double>> recorded;
};

template <class Operation>
void onRandomScenes(const Operation& operation) {
    for (int seed = 0; seed < scenes; ++seed) {
        SCOPED_TRACE("scene " + std::to_string(seed));
        Case one(seed);
        operation(one);
        one.expectSame();
        if (::testing::Test::HasFailure()) return;
    }
}

TEST(RandomScenes, smoothing) {
    onRandomScenes([](Case& one) {
        std::vector<double> expected = one.phi;
        const int passes = one.dice.below(4);
        naiveSmooth(one.scene, one.state, expected, passes, one.refresh());
        one.calc.Smooth_Variable(one.phi.data(), passes);
        EXPECT_TRUE(sameSlots(expected, one.phi.data()));
    });
}

TEST(RandomScenes, default_gradient) {
    onRandomScenes([](Case& one) {
        const int iterations = one.dice.below(6);
        naiveDefault(one.scene, one.state, iterations, one.phi, one.naive, one.refresh());
        one.calc.GradVarb(iterations, one.phi.data(), one.mine.x.data(), one.mine.y.data(),
                          one.mine.z.data());
    });
}

TEST(RandomScenes, upwind_gradient) {
    onRandomScenes([](Case& one) {
        naiveUpwind(one.scene, one.state, one.phi, one.naive, one.refresh());
        one.calc.GradVarb_Upwind(one.phi.data(), one.mine.x.data(), one.mine.y.data(),
                                 one.mine.z.data());
    });
}

TEST(RandomScenes, least_squares_gradient) {
    onRandomScenes([](Case& one) {
        naiveIterative(one.scene, one.state, one.phi, one.naive, one.refresh());
        one.calc.GradVarb_Iterative(one.phi.data(), one.mine.x.data(), one.mine.y.data(),
                                    one.mine.z.data());
    });
}

TEST(RandomScenes, rbf_gradient) {
    onRandomScenes([](Case& one) {
        rbfRows() =
            randomRbfRows(one.dice, static_cast<int>(one.scene.inner.size()), one.host.slots());
        naiveRbf(one.scene, one.state, rbfRows(), one.phi, one.naive, one.refresh());
        one.calc.GradVarb_RBF(one.phi.data(), one.mine.x.data(), one.mine.y.data(),
                              one.mine.z.data());
    });
}

}  // namespace

}  // namespace weldline::test
