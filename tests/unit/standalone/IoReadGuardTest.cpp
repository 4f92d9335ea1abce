// The guard round VTK's readers. Each fault happens in a child process.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <unistd.h>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

#include "io/ReadGuard.h"

namespace weldline::test {
namespace {

void endWithLine(const char* line) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line, std::strlen(line));
    ::_exit(3);
}

class ReadGuards : public ::testing::Test {
  protected:
    void SetUp() override { ReadGuard::endBy(endWithLine); }
    void TearDown() override { ReadGuard::endBy(nullptr); }

    static constexpr const char* astray =
        "^'part.vtu': the file is damaged or incomplete \\(what it says leads the reader "
        "astray\\); "
        "write it again from its source$";
};

using Handler = void (*)(int);

Handler handlerOf(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

rlim_t memoryLimit() {
    rlimit limit{};
    ::getrlimit(RLIMIT_AS, &limit);
    return limit.rlim_cur;
}

// Uses up any stack; the argument keeps the compiler from making a loop of it.
int deeper(volatile int* level) {
    volatile int next = *level + 1;
    return next < 0 ? 0 : deeper(&next) + *level;
}

TEST_F(ReadGuards, exit_while_reading) {
    EXPECT_EXIT(
        {
            const ReadGuard guard("part.vtu", 0.0);
            std::exit(0);
        },
        ::testing::ExitedWithCode(3), astray);
}

TEST_F(ReadGuards, exit_beside_reading) {
    EXPECT_EXIT(
        {
            { const ReadGuard guard("part.vtu", 0.0); }
            std::exit(7);
        },
        ::testing::ExitedWithCode(7), "^$");
}

// Handlers run from last to first: the library's words come after the silence.
TEST_F(ReadGuards, silence_at_exit) {
    EXPECT_EXIT(
        {
            std::atexit([] { std::fputs("the library complains", stderr); });
            ReadGuard::silenceExit();
            std::fputs("one line", stderr);
            std::exit(7);
        },
        ::testing::ExitedWithCode(7), "^one line$");
}

TEST_F(ReadGuards, faultsEndInOneLine) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        EXPECT_EXIT(
            {
                const ReadGuard guard("part.vtu", 0.0);
                ::raise(signal);
            },
            ::testing::ExitedWithCode(3), astray)
            << signal;
    }
}

TEST_F(ReadGuards, endlessRecursionEndsInOneLine) {
    EXPECT_EXIT(
        {
            const ReadGuard guard("part.vtu", 0.0);
            volatile int level = 0;
            deeper(&level);
        },
        ::testing::ExitedWithCode(3), astray);
}

TEST_F(ReadGuards, exceptionsWithoutAWayOutEndInOneLine) {
    EXPECT_EXIT(
        {
            const ReadGuard guard("part.vtu", 0.0);
            std::terminate();
        },
        ::testing::ExitedWithCode(3), astray);
}

// 10 s a file and 10 s a megabyte: 0.9 megabytes less than nothing leave one second.
TEST_F(ReadGuards, endlessLoopEndsInOneLine) {
    EXPECT_EXIT(
        {
            const ReadGuard guard("part.vtu", -0.9e6);
            volatile bool goOn = true;
            while (goOn) {
            }
        },
        ::testing::ExitedWithCode(3),
        "^'part.vtu': the file is damaged or incomplete \\(reading it does not come to an end\\); "
        "write it again from its source$");
}

// The C library says "free(): invalid pointer" or the like before it aborts.
TEST_F(ReadGuards, wordsOfOthersAreNotSeen) {
    EXPECT_EXIT(
        {
            const ReadGuard guard("part.vtu", 0.0);
            std::fputs("free(): invalid pointer\n", stderr);
            std::abort();
        },
        ::testing::ExitedWithCode(3), astray);
    EXPECT_EXIT(
        {
            { const ReadGuard guard("part.vtu", 0.0); }
            endWithLine("seen again");
        },
        ::testing::ExitedWithCode(3), "^seen again$");
    EXPECT_EXIT(
        {
            const ReadGuard guard("part.vtu", 0.0);
            ReadGuard::giveBackErrors();
            endWithLine("interrupted");
        },
        ::testing::ExitedWithCode(3), "^interrupted$");
}

TEST_F(ReadGuards, namesWithLineBreaksStayInOneLine) {
    EXPECT_EXIT(
        {
            const ReadGuard guard("a\nb.vtu", 0.0);
            ::raise(SIGSEGV);
        },
        ::testing::ExitedWithCode(3), "^'a b.vtu': the file is damaged");
}

TEST_F(ReadGuards, veryLongNamesAreCut) {
    EXPECT_EXIT(
        {
            const ReadGuard guard(std::string(100000, 'x'), 0.0);
            ::raise(SIGSEGV);
        },
        ::testing::ExitedWithCode(3), "^'x+': the file is damaged");
}

// One gibibyte and 1100 bytes a byte of the file: two gibibytes do not fit, with a file of a
// megabyte they do.
TEST_F(ReadGuards, absurdAllocationsFail) {
    const std::size_t twoGibibytes = std::size_t{2} << 30U;
    {
        const ReadGuard guard("part.vtu", 0.0);
        EXPECT_THROW(::operator delete(::operator new(twoGibibytes)), std::bad_alloc);
    }
    const ReadGuard guard("part.vtu", 1e6);
    EXPECT_NO_THROW(::operator delete(::operator new(twoGibibytes)));
}

TEST_F(ReadGuards, everythingIsAsBeforeAfterwards) {
    const Handler segv = handlerOf(SIGSEGV);
    const Handler prof = handlerOf(SIGPROF);
    const std::terminate_handler terminate = std::get_terminate();
    const rlim_t memory = memoryLimit();
    stack_t stack{};
    ::sigaltstack(nullptr, &stack);
    {
        const ReadGuard guard("part.vtu", 0.0);
        EXPECT_NE(handlerOf(SIGSEGV), segv);
        EXPECT_LT(memoryLimit(), memory);
    }
    EXPECT_EQ(handlerOf(SIGSEGV), segv);
    EXPECT_EQ(handlerOf(SIGPROF), prof);
    EXPECT_EQ(std::get_terminate(), terminate);
    EXPECT_EQ(memoryLimit(), memory);
    stack_t after{};
    ::sigaltstack(nullptr, &after);
    EXPECT_EQ(after.ss_flags, stack.ss_flags);
}

TEST_F(ReadGuards, doNothingWithoutAnEnd) {
    ReadGuard::endBy(nullptr);
    const Handler segv = handlerOf(SIGSEGV);
    const rlim_t memory = memoryLimit();
    const ReadGuard guard("part.vtu", 0.0);
    EXPECT_EQ(handlerOf(SIGSEGV), segv);
    EXPECT_EQ(memoryLimit(), memory);
}

}  // namespace
}  // namespace weldline::test
