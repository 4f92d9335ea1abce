#pragma once

#include <map>
#include <string>
#include <vector>

#include "../ProgramTest.h"

namespace weldline::test {

// One call that fails (FaultPlan.h).
struct Fault {
    std::string call;
    std::string error;  // number, or "short"
    bool lasting = false;
};

// Runs a command again and again, each time with the next call failing, until a run meets no
// failure any more. Whatever fails, the run must end well and leave nothing half done.
class FaultTest : public ProgramTest {
  protected:
    using Files = std::map<std::string, std::string>;  // content by name
    using Names = std::vector<std::string>;

    FaultTest();
    ~FaultTest() override;

    // The command, and the files of an earlier run that it is to replace (they may be none). All
    // other files of the folder are its input.
    void prepare(const Names& command, const Files& old);

    // Fails each call of that name in turn; answers how many there were.
    int failEach(const Fault& fault);

    // Fails the given ones of that name. How many there are varies a little from run to run (VTK's
    // threads), so one in ten may lie beyond the last.
    void failSome(const Fault& fault, const std::vector<int>& numbers);

    // Fails all calls of that name on one file or on all files of a folder.
    void failAllOn(const std::string& place, const Fault& fault);

    // Runs any command once while all calls of that name fail on the files of a place.
    Outcome runFailing(const Names& command, const Fault& fault, const std::string& place,
                       Setting setting = {}) const;

    // How many calls of that name an undisturbed run makes.
    int countCalls(const std::string& call) const;

    // All files of the folder.
    Files files() const;

  private:
    struct Ending {
        Outcome outcome;
        std::string call;
        std::string concerned;  // file whose call failed; empty: none failed
        Files files;
    };

    std::string ownPlaces() const;
    Setting settingFor(const Fault& fault, int number, const std::string& places,
                       Setting setting = {}) const;
    Ending runOnce(const Fault& fault, int number, const std::string& places);
    void restore() const;
    void expectWhole(const Ending& ending) const;
    void expectSuccess(const Ending& ending) const;
    void expectClearEnd(const Ending& ending) const;
    std::string reportFile() const { return m_reports + "/report"; }

    Names m_command;
    Files m_input;
    Files m_old;
    Files m_new;
    Outcome m_undisturbed;
    std::string m_reports;
    int m_failedCalls = 0;  // for the report of the test
};

}  // namespace weldline::test
