// Ranks: 3, as processes that the tests start.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "ProgramMpiTest.h"

// One of several ranks is killed at a random moment, or the launcher is told to end. The
// environment variables WELDLINE_MPI_KILLS and WELDLINE_KILL_SEED give another number of runs and
// other moments (scripts/kill).

namespace weldline::test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

unsigned fromEnvironment(const char* name, unsigned usual) {
    const char* text = std::getenv(name);
    return text == nullptr ? usual : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

class MpiKill : public MpiProgramTest {
  protected:
    static constexpr int ranks = 3;
    // An undisturbed run takes a second.
    static constexpr std::chrono::seconds patience{30};

    void SetUp() override {
        const std::string part = write("part.vtu", plateWithTwoFronts(24, 8, 8));
        m_command = {"analyze", part, "-o", at("r.pvtu"), "--json", at("sum.json")};
        Names earlier = m_command;
        earlier.insert(earlier.end(), {"--method", "2"});
        ASSERT_EQ(onRanks(ranks, earlier).exitCode, 0);
        fs::create_directory(at("old"));
        keep("old");
        const auto start = Clock::now();
        ASSERT_EQ(onRanks(ranks, m_command).exitCode, 0);
        m_duration = Clock::now() - start;
        fs::create_directory(at("new"));
        keep("new");
        m_names = entries();
    }

    void keep(const std::string& folder) const {
        for (const std::string& name : resultFiles())
            fs::copy_file(at(name), at(folder) + "/" + name);
    }

    Names resultFiles() const {
        Names names;
        for (const std::string& name : entries())
            if (name.starts_with("r") || name == "sum.json") names.push_back(name);
        return names;
    }

    // Brings back the earlier results alone.
    void reset() const {
        for (const std::string& name : entries())
            if (name != "part.vtu" && name != "old" && name != "new") fs::remove(at(name));
        for (const auto& file : fs::directory_iterator(at("old")))
            fs::copy_file(file.path(), at(file.path().filename().string()));
    }

    // The file that names the pieces is that of one run, and the pieces it names are there and of
    // the same run.
    void expectWhole() const {
        const std::string list = read(at("r.pvtu"));
        const bool isOld = list == read(at("old/r.pvtu"));
        EXPECT_TRUE(isOld || list == read(at("new/r.pvtu")));
        for (const auto& file : fs::directory_iterator(at(isOld ? "old" : "new"))) {
            const std::string name = file.path().filename().string();
            if (!name.starts_with("r_")) continue;
            EXPECT_TRUE(read(at(name)) == read(file.path())) << name;
        }
        for (const char* name : {"r.cmp", "sum.json"}) {
            const std::string text = read(at(name));
            EXPECT_TRUE(text == read(at("old/") + name) || text == read(at("new/") + name)) << name;
        }
    }

    // Runs the command; `strike` gets the launcher's process number at a random moment.
    Outcome disturb(const std::function<void(int)>& strike) {
        reset();
        Setting setting;
        const auto moment = m_duration * std::uniform_real_distribution<double>(0.1, 1.0)(m_random);
        setting.whileRunning = [&](int launcher) {
            std::this_thread::sleep_for(moment);
            strike(launcher);
            awaitRanks(launcher);
        };
        const Outcome outcome = onRanks(ranks, m_command, setting);
        expectWhole();
        return outcome;
    }

    // No rank waits for the one that is gone. The launcher itself may: that of Debian's Open MPI
    // stops now and then over a lock of its own when all ranks have ended.
    static void awaitRanks(int launcher) {
        const auto end = Clock::now() + patience;
        while (!childrenOf(launcher).empty() && Clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_TRUE(childrenOf(launcher).empty());
        const auto endOfLauncher = Clock::now() + std::chrono::seconds(10);
        while (isAlive(launcher) && Clock::now() < endOfLauncher)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        if (isAlive(launcher)) ::kill(launcher, SIGKILL);
    }

    static bool isAlive(int process) {
        const std::vector<int> ours = childrenOf(::getpid());
        return std::find(ours.begin(), ours.end(), process) != ours.end();
    }

    // The next run finds nothing in its way and removes what was left.
    void expectTidyAfterNextRun() const {
        EXPECT_EQ(onRanks(ranks, m_command).exitCode, 0);
        EXPECT_EQ(entries(), m_names);
        EXPECT_EQ(temporaries(), Names{});
    }

    unsigned runs() const { return fromEnvironment("WELDLINE_MPI_KILLS", 4); }

    Names m_command;
    Names m_names;
    std::chrono::duration<double> m_duration{};
    std::mt19937 m_random{fromEnvironment("WELDLINE_KILL_SEED", 1)};
};

TEST_F(MpiKill, one_rank_by_force_ends_the_run_and_leaves_old_or_new_results) {
    for (unsigned run = 0; run < runs(); ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        bool hasStruck = false;
        const Outcome outcome = disturb([&](int launcher) {
            const std::vector<int> processes = childrenOf(launcher);
            if (processes.empty()) return;
            ::kill(processes[m_random() % processes.size()], SIGKILL);
            hasStruck = true;
        });
        EXPECT_TRUE(outcome.exitCode == 0 || hasStruck) << outcome.err;
        // At the very end the notes of the run may have been told.
        for (const std::string& line : ownLines(outcome))
            EXPECT_TRUE(line.starts_with("weldline: note:")) << outcome.err;
        expectTidyAfterNextRun();
        if (HasFailure()) return;
    }
}

TEST_F(MpiKill, all_ranks_by_a_signal_leave_no_temporaries) {
    for (unsigned run = 0; run < runs(); ++run) {
        const int signal = run % 2 == 0 ? SIGTERM : SIGINT;
        SCOPED_TRACE("signal " + std::to_string(signal) + ", run " + std::to_string(run));
        disturb([&](int launcher) {
            for (const int rank : childrenOf(launcher)) ::kill(rank, signal);
        });
        EXPECT_EQ(temporaries(), Names{});
        for (const std::string& name : entries()) EXPECT_FALSE(name.ends_with(".tmp")) << name;
        expectTidyAfterNextRun();
        if (HasFailure()) return;
    }
}

// On its way out the launcher of Debian's Open MPI leaves its ranks some milliseconds between the
// signal that asks and the one that does not. What they could not remove goes with the next run.
TEST_F(MpiKill, launcher_by_a_signal_leaves_old_or_new_results) {
    for (unsigned run = 0; run < runs(); ++run) {
        const int signal = run % 2 == 0 ? SIGTERM : SIGINT;
        SCOPED_TRACE("signal " + std::to_string(signal) + ", run " + std::to_string(run));
        disturb([&](int launcher) { ::kill(launcher, signal); });
        expectTidyAfterNextRun();
        if (HasFailure()) return;
    }
}

}  // namespace

}  // namespace weldline::test
