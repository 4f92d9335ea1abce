#include "FaultTest.h"

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace weldline::test {

namespace {

namespace fs = std::filesystem;

// The lines of standard error that are no notes on a run.
std::vector<std::string> errorLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (line.rfind("weldline: note: ", 0) != 0) lines.push_back(line);
    return lines;
}

// Of the files of the earlier run.
constexpr auto oldMode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;

// A call that removes a file cannot fail and remove it all the same.
bool mayLeaveTemporary(const std::string& call) {
    return call == "unlink" || call == "rmdir";
}

}  // namespace

FaultTest::FaultTest() : m_reports((fs::temp_directory_path() / "fault-report-XXXXXX").string()) {
    if (::mkdtemp(m_reports.data()) == nullptr) throw std::runtime_error("no temporary folder");
}

FaultTest::~FaultTest() {
    std::error_code none;
    fs::remove_all(m_reports, none);
}

FaultTest::Files FaultTest::files() const {
    Files found;
    for (const std::string& name : entries())
        if (fs::is_regular_file(at(name))) found[name] = read(at(name));
    return found;
}

void FaultTest::prepare(const Names& command, const Files& old) {
    m_command = command;
    m_old = old;
    m_input = files();
    for (const auto& [name, content] : old) m_input.erase(name);
    m_undisturbed = weldline(command);
    ASSERT_EQ(m_undisturbed.exitCode, 0) << m_undisturbed.err;
    m_new = files();
}

void FaultTest::restore() const {
    for (const std::string& name : entries())
        if (m_input.count(name) == 0 && fs::is_regular_file(at(name))) fs::remove(at(name));
    for (const auto& [name, content] : m_old) fs::permissions(write(name, content), oldMode);
    for (const std::string& name : temporaries())
        fs::remove_all(fs::path(temporariesFolder()) / name);
    fs::remove(reportFile());
}

// Where a file is the program's own concern.
std::string FaultTest::ownPlaces() const {
    return at("") + ":" + temporariesFolder();
}

Setting FaultTest::settingFor(const Fault& fault, int number, const std::string& places,
                              Setting setting) const {
    setting.environment = {{"LD_PRELOAD", WELDLINE_FAULT_SHIM},
                           {"FAULT_CALL", fault.call},
                           {"FAULT_AT", std::to_string(number)},
                           {"FAULT_ERROR", fault.error},
                           {"FAULT_UNDER", places},
                           {"FAULT_REPORT", reportFile()}};
    if (fault.lasting) setting.environment["FAULT_ALWAYS"] = "1";
    return setting;
}

Outcome FaultTest::runFailing(const Names& command, const Fault& fault, const std::string& place,
                              Setting setting) const {
    return weldline(command, settingFor({fault.call, fault.error, true}, 1, place, setting));
}

FaultTest::Ending FaultTest::runOnce(const Fault& fault, int number, const std::string& places) {
    restore();
    Ending ending;
    ending.call = fault.call;
    ending.outcome = weldline(m_command, settingFor(fault, number, places));
    ending.concerned = read(reportFile());
    if (!ending.concerned.empty()) RecordProperty("failed_calls", ++m_failedCalls);
    ending.files = files();
    SCOPED_TRACE("call " + fault.call + ", number " + std::to_string(number) + ", error " +
                 fault.error + (fault.lasting ? " from there on" : "") + ", on " +
                 ending.concerned + "\nexit code " + std::to_string(ending.outcome.exitCode) +
                 ", signal " + std::to_string(ending.outcome.signal) + "\n" + ending.outcome.err);
    if (mayLeaveTemporary(fault.call)) {
        for (auto file = ending.files.begin(); file != ending.files.end();)
            file = file->first.front() == '.' ? ending.files.erase(file) : std::next(file);
    } else {
        EXPECT_TRUE(temporaries().empty());
    }
    EXPECT_EQ(ending.outcome.signal, 0);
    expectWhole(ending);
    if (ending.outcome.exitCode == 0)
        expectSuccess(ending);
    else
        expectClearEnd(ending);
    return ending;
}

int FaultTest::countCalls(const std::string& call) const {
    restore();
    weldline(m_command, settingFor({call, "0"}, 0, ownPlaces()));
    return std::stoi(read(reportFile()));
}

int FaultTest::failEach(const Fault& fault) {
    for (int number = 1;; ++number) {
        const Ending ending = runOnce(fault, number, ownPlaces());
        if (!ending.concerned.empty()) continue;
        EXPECT_EQ(ending.outcome.exitCode, 0) << ending.outcome.err;
        return number - 1;
    }
}

void FaultTest::failSome(const Fault& fault, const std::vector<int>& numbers) {
    std::size_t failed = 0;
    for (const int number : numbers)
        if (!runOnce(fault, number, ownPlaces()).concerned.empty()) ++failed;
    EXPECT_GE(failed, numbers.size() - numbers.size() / 10);
}

void FaultTest::failAllOn(const std::string& place, const Fault& fault) {
    EXPECT_NE(runOnce({fault.call, fault.error, true}, 1, place).concerned, "") << place;
}

// Every file is the old one or the new one; where there was none, it may be missing.
void FaultTest::expectWhole(const Ending& ending) const {
    for (const auto& [name, content] : ending.files) {
        const bool isNew = m_new.count(name) > 0 && content == m_new.at(name);
        const bool isOld = m_old.count(name) > 0 && content == m_old.at(name);
        EXPECT_TRUE(isNew || isOld) << name << " with " << content.size() << " bytes";
    }
    for (const auto& [name, content] : m_old) {
        EXPECT_EQ(ending.files.count(name), 1u) << name;
        EXPECT_TRUE(ending.call == "fchmod" || fs::status(at(name)).permissions() == oldMode);
    }
}

// The call was of no consequence: all is as if it had not failed.
void FaultTest::expectSuccess(const Ending& ending) const {
    EXPECT_TRUE(ending.files == m_new);
    EXPECT_EQ(ending.outcome.out, m_undisturbed.out);
    EXPECT_EQ(ending.outcome.err, m_undisturbed.err);
}

void FaultTest::expectClearEnd(const Ending& ending) const {
    const Outcome& outcome = ending.outcome;
    EXPECT_TRUE(outcome.exitCode == 1 || outcome.exitCode == 3);
    EXPECT_TRUE(outcome.exitCode == 3 || !contains(outcome.err, "damaged"));
    const Names lines = errorLines(outcome.err);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].rfind("weldline: ", 0), 0u);
    EXPECT_EQ(outcome.err.back(), '\n');
    const bool namesPlace = contains(lines[0], at("")) || contains(lines[0], temporariesFolder()) ||
                            contains(lines[0], "standard output");
    EXPECT_TRUE(namesPlace || ending.concerned == "memory");
    // Standard output gets everything, or, if it is what fails, as much as it took.
    const std::string& all = m_undisturbed.out;
    EXPECT_TRUE(outcome.out.empty() || (contains(lines[0], "standard output") &&
                                        all.substr(0, outcome.out.size()) == outcome.out));
}

}  // namespace weldline::test
