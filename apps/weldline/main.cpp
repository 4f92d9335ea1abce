#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "Analyze.h"
#include "Arguments.h"
#include "Check.h"
#include "Compare.h"
#include "Console.h"
#include "Exhaustion.h"
#include "ExitCode.h"
#include "Explain.h"
#include "FillTimes.h"
#include "Info.h"
#include "Interruption.h"
#include "Render.h"
#include "Report.h"
#include "ShowSettings.h"
#include "base/Errors.h"
#include "comm/Agreement.h"
#include "comm/LaunchedRanks.h"

namespace {

using namespace weldline;

// Commands other than analyze are for one rank.
ExitCode runCommand(Ranks& ranks, const Arguments& arguments) {
    if (arguments.command == Arguments::Command::Analyze) return analyze(ranks, arguments.analyze);
    agreeOnFailure(ranks, [&] {
        if (ranks.rank() != 0) return;
        if (arguments.command == Arguments::Command::ShowText) writeStandardOutput(arguments.text);
        if (arguments.command == Arguments::Command::Check) checkInput(arguments.check);
        if (arguments.command == Arguments::Command::Compare) compareResults(arguments.compare);
        if (arguments.command == Arguments::Command::Explain) explainResult(arguments.explain);
        if (arguments.command == Arguments::Command::FillTime) writeFillTimes(arguments.fillTime);
        if (arguments.command == Arguments::Command::Info) showInfo(arguments.info);
        if (arguments.command == Arguments::Command::Render) renderResult(arguments.render);
        if (arguments.command == Arguments::Command::Report) writeReport(arguments.report);
        if (arguments.command == Arguments::Command::Settings) showSettings(arguments.settings);
    });
    return Done;
}

// The data set that the command works on, for messages; empty: none.
std::string inputOf(const Arguments& arguments) {
    for (const std::string& input :
         {arguments.analyze.input, arguments.check.input, arguments.compare.first,
          arguments.explain.input, arguments.fillTime.input, arguments.info.input,
          arguments.render.input})
        if (!input.empty()) return input;
    return arguments.report.input;
}

// An error that all ranks know of is told by the first. Any other is told by the rank that has it,
// which then ends the others: they wait for it in vain.
int fail(const Ranks& ranks, std::string_view message, ExitCode code) {
    const bool isShared = ranks.size() == 1 || wasAgreedOn(message);
    if (!isShared || ranks.rank() == 0) writeMessage({message});
    if (!isShared) {
        leaveNothing();
        endAllRanks(code);
    }
    return code;
}

int runProgram(Ranks& ranks, int argc, char** argv) {
    try {
        const Arguments arguments = together(ranks, [&] { return parseArguments(argc, argv); });
        handleExhaustion(inputOf(arguments));
        return runCommand(ranks, arguments);
    } catch (const UsageError& error) {
        return fail(ranks, error.what(), WrongUsage);
    } catch (const InputError& error) {
        return fail(ranks, error.what(), UnusableInput);
    } catch (const std::bad_alloc& error) {
        // The first rank speaks for all, and ends them.
        if (ranks.rank() == 0 || !wasAgreedOn(error.what())) endForMemory();
        return FailedWhileRunning;
    } catch (const std::exception& error) {
        return fail(ranks, error.what(), FailedWhileRunning);
    }
}

}  // namespace

// 1. Prepare streams and signals. 2. Join the other ranks of the run. 3. Read the command line and
// run the command. 4. Turn an error into one line and an exit code.
int main(int argc, char** argv) {
    try {
        openMissingStreams();
        handleInterruptions();
        handleReadFaults();
        handleExhaustion({});
        endInSilence(LaunchedRanks::hasLauncher());
        LaunchedRanks launched(argc, argv);
        endInSilence(launched.get().size() > 1);
        if (LaunchedRanks::hasLauncher()) doWithoutStyle();
        return runProgram(launched.get(), argc, argv);
    } catch (const std::exception& error) {
        writeMessage({error.what()});
        return FailedWhileRunning;
    }
}
