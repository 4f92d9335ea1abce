#include <gtest/gtest.h>

#include <barrier>
#include <memory>
#include <thread>

#include "QuietHost.h"
#include "ShakenBox.h"

// Handles share nothing, so each may live in a thread of its own. The thread sanitizer runs this
// test as well.

namespace weldline::test {

namespace {

constexpr int kHandles = 8;
constexpr int kLives = 5;

// Eight different calculations: all methods and gradient schemes, each host with values of its own.
std::unique_ptr<QuietHost> hostOfThread(int thread) {
    auto host = std::make_unique<QuietHost>(addShakenBox);
    host->choose(everyChoice()[thread], {"FlagDebugOutput = 1"});
    for (int c = 1; c <= host->host.mesh()->m_nCV; ++c)
        host->host.gv()->m_pFlowVariable[c] += 0.01F * static_cast<float>((c * (thread + 3)) % 7);
    return host;
}

}  // namespace

TEST(Threads, eight_handles_at_once_give_the_bits_of_one_after_the_other) {
    std::vector<std::unique_ptr<QuietHost>> hosts;
    std::vector<std::vector<double>> alone, together;
    for (int t = 0; t < kHandles; ++t) {
        hosts.push_back(hostOfThread(t));
        alone.push_back(hosts[t]->roomForAngles());
        together.push_back(hosts[t]->roomForAngles());
        hosts[t]->calculate(alone[t]);
    }
    std::barrier start(kHandles);
    std::vector<std::thread> threads;
    for (int t = 0; t < kHandles; ++t)
        threads.emplace_back([&, t] {
            start.arrive_and_wait();
            for (int life = 0; life < kLives; ++life) hosts[t]->calculate(together[t]);
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(together, alone);
    for (int t = 1; t < kHandles; ++t) EXPECT_NE(alone[t], alone[0]) << "thread " << t;
}

// A host may make its handles in one thread, and bind, run and destroy them in others.
TEST(Threads, a_handle_may_change_its_thread) {
    QuietHost host(addShakenBox);
    host.choose({4, 3}, {"FlagDebugOutput = 1"});
    std::vector<double> alone = host.roomForAngles();
    std::vector<double> moved = alone;
    host.calculate(alone);
    auto handle = std::make_unique<CKVR3D_WeldLine_Manipulator>();
    std::thread([&] { host.bind(*handle); }).join();
    std::thread([&] { handle->calWeldLine(); }).join();
    host.read(*handle, moved);
    std::thread([&] { handle.reset(); }).join();
    EXPECT_EQ(moved, alone);
}

}  // namespace weldline::test
