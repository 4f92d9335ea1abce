#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <map>
#include <random>
#include <thread>

#include "ProgramTest.h"

// A run that replaces the results of an earlier one is ended at random moments. The environment
// variables WELDLINE_KILLS and WELDLINE_KILL_SEED give another number of runs and other moments
// (scripts/kill).

namespace weldline::test {

namespace {

using Clock = std::chrono::steady_clock;
using Names = std::vector<std::string>;
using Files = std::map<std::string, std::string>;

unsigned fromEnvironment(const char* name, unsigned usual) {
    const char* text = std::getenv(name);
    return text == nullptr ? usual : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

class Kill : public ProgramTest {
  protected:
    void SetUp() override {
        const std::string part = write("part.vtu", plateWithTwoFronts(24, 8, 8));
        m_command = {"analyze", part,           "-o",    at("result.vtu"),
                     "--json",  at("sum.json"), "--set", "FlagDebugOutput=1"};
        Names earlier = m_command;
        earlier.insert(earlier.end(), {"--method", "2"});
        ASSERT_EQ(weldline(earlier).exitCode, 0);
        m_old = outputs();
        const auto start = Clock::now();
        ASSERT_EQ(weldline(m_command).exitCode, 0);
        m_duration = Clock::now() - start;
        m_new = outputs();
        m_names = entries();
    }

    Files outputs() const {
        Files files;
        for (const char* name :
             {"result.vtu", "result.cmp", "sum.json", "result_KVRWDLineDebug.txt"})
            files[name] = read(at(name));
        return files;
    }

    // Somewhere between the start and a little after the end of an undisturbed run.
    std::chrono::duration<double> moment() {
        return m_duration * std::uniform_real_distribution<double>(0.0, 1.1)(m_random);
    }

    Outcome endBy(int signal) {
        for (const auto& [name, content] : m_old) write(name, content);
        Setting setting;
        setting.whileRunning = [&](int child) {
            std::this_thread::sleep_for(moment());
            ::kill(child, signal);
        };
        const Outcome outcome = weldline(m_command, setting);
        EXPECT_TRUE(outcome.signal == signal || outcome.exitCode == 0) << outcome.err;
        for (const auto& [name, content] : outputs())
            EXPECT_TRUE(content == m_old[name] || content == m_new[name]) << name;
        return outcome;
    }

    // Nothing is left of any run in the folders.
    void expectTidy() const {
        EXPECT_EQ(entries(), m_names);
        EXPECT_EQ(temporaries(), Names{});
    }

    unsigned runs(unsigned usual) const { return fromEnvironment("WELDLINE_KILLS", usual); }

    Names m_command;
    Names m_names;
    Files m_old;
    Files m_new;
    std::chrono::duration<double> m_duration{};
    std::mt19937 m_random{fromEnvironment("WELDLINE_KILL_SEED", 1)};
};

// All files are the old ones or all are the new ones. Before main the signal has its default
// action, without a message.
TEST_F(Kill, by_a_signal_leaves_old_or_new_results_and_nothing_else) {
    const std::vector<int> signals{SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGXCPU};
    for (unsigned run = 0; run < runs(40); ++run) {
        const int signal = signals[run % signals.size()];
        const Outcome outcome = endBy(signal);
        SCOPED_TRACE("signal " + std::to_string(signal) + ", run " + std::to_string(run) + "\n" +
                     outcome.err);
        const Files after = outputs();
        EXPECT_TRUE(after == m_old || after == m_new);
        expectTidy();
        if (HasFailure()) return;
    }
}

// What the killed run leaves beside the results does not disturb the next one, which removes it.
TEST_F(Kill, by_force_leaves_old_or_new_results_and_the_next_run_tidies_up) {
    for (unsigned run = 0; run < runs(40); ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        endBy(SIGKILL);
        for (const std::string& name : entries())
            EXPECT_TRUE(std::count(m_names.begin(), m_names.end(), name) == 1 ||
                        (name.front() == '.' && name.ends_with(".tmp")))
                << name;
        EXPECT_EQ(weldline(m_command).exitCode, 0);
        EXPECT_TRUE(outputs() == m_new);
        expectTidy();
        if (HasFailure()) return;
    }
}

}  // namespace

}  // namespace weldline::test
