#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "Analyze.h"
#include "Arguments.h"
#include "Console.h"
#include "Exhaustion.h"
#include "ExitCode.h"
#include "Info.h"
#include "Interruption.h"
#include "ShowSettings.h"
#include "base/Errors.h"

namespace {

using namespace weldline;

void runCommand(const Arguments& arguments) {
    switch (arguments.command) {
        case Arguments::Command::ShowText:
            return writeStandardOutput(arguments.text);
        case Arguments::Command::Analyze:
            return analyze(arguments.analyze);
        case Arguments::Command::Info:
            return showInfo(arguments.info);
        case Arguments::Command::Settings:
            return showSettings(arguments.settings);
    }
}

// The data set that the command works on, for messages; empty: none.
std::string inputOf(const Arguments& arguments) {
    return arguments.analyze.input.empty() ? arguments.info.input : arguments.analyze.input;
}

int fail(std::string_view message, ExitCode code) {
    writeMessage({message});
    return code;
}

}  // namespace

// 1. Prepare streams and signals. 2. Read the command line. 3. Run the command. 4. Turn an error
// into one line and an exit code.
int main(int argc, char** argv) {
    try {
        openMissingStreams();
        handleInterruptions();
        handleReadFaults();
        handleExhaustion({});
        const Arguments arguments = parseArguments(argc, argv);
        handleExhaustion(inputOf(arguments));
        runCommand(arguments);
        return Done;
    } catch (const UsageError& error) {
        return fail(error.what(), WrongUsage);
    } catch (const InputError& error) {
        return fail(error.what(), UnusableInput);
    } catch (const std::bad_alloc&) {
        endForMemory();
    } catch (const std::exception& error) {
        return fail(error.what(), FailedWhileRunning);
    }
}
