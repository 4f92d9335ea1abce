#include "RunNotes.h"

#include <array>
#include <nlohmann/json.hpp>

#include "Summary.h"
#include "base/Errors.h"

namespace weldline {

namespace {

using RunJson = nlohmann::json;

constexpr std::array<GroupKind, 4> kinds{GroupKind::Wall, GroupKind::Inlet, GroupKind::Outlet,
                                         GroupKind::Symmetry};
constexpr std::array<ZeroFillTime, 3> zeros{ZeroFillTime::Automatic, ZeroFillTime::Filled,
                                            ZeroFillTime::NotReached};

Settings settingsOf(const RunJson& run) {
    const RunJson& s = run.at("settings");
    Settings settings;
    s.at("WeldlingAngleMethod").get_to(settings.method);
    s.at("nSmooth_beforeGrad").get_to(settings.smoothBefore);
    s.at("nSmooth_afterGrad").get_to(settings.smoothAfter);
    s.at("nGrad").get_to(settings.gradientIterations);
    s.at("TruncateAngle").get_to(settings.truncateAngle);
    s.at("BoundaryAngle").get_to(settings.boundaryAngle);
    s.at("GradValueFilterPara").get_to(settings.gradientFilter);
    s.at("VolumeFilter").get_to(settings.volumeFilter);
    s.at("GradMethodMFT").get_to(settings.gradientMethod);
    return settings;
}

// A patch that the run does not name is wall.
GroupKind groupOf(const RunJson& patches, const std::string& name) {
    for (const RunJson& patch : patches)
        for (const GroupKind kind : kinds)
            if (patch.at("name") == name && patch.at("group") == nameOf(kind)) return kind;
    return GroupKind::Wall;
}

std::string textOf(const RunJson& run, const char* name) {
    const auto found = run.find(name);
    return found == run.end() || found->is_null() ? "" : found->get<std::string>();
}

RunNotes understood(const RunJson& run, const std::vector<std::string>& patches) {
    RunNotes notes;
    notes.settings = settingsOf(run);
    run.at("settings").at("meshFileType").get_to(notes.meshFileType);
    run.at("settings").at("gradientSetSwitch").get_to(notes.gradientSetSwitch);
    for (const std::string& name : patches)
        notes.groupOfPatch.push_back(groupOf(run.at("mesh").at("patches"), name));
    for (const ZeroFillTime zero : zeros)
        if (textOf(run, "zeroTime") == nameOf(zero)) notes.zeroTime = zero;
    notes.biField = textOf(run, "biField");
    notes.cellState = textOf(run, "cellState");
    return notes;
}

}  // namespace

RunNotes readRunNotes(const std::string& file, const ResultNotes& notes) {
    if (notes.run.empty())
        throw InputError(file +
                         ": the result does not tell with which settings it was made; write it "
                         "anew with 'weldline analyze -o'");
    try {
        return understood(RunJson::parse(notes.run), notes.patches.names);
    } catch (const RunJson::exception&) {
        throw InputError(file +
                         ": the settings that the result tells of cannot be understood; write it "
                         "anew with 'weldline analyze -o'");
    }
}

std::string nameOf(ZeroFillTime zero) {
    constexpr std::array<const char*, 3> names{"auto", "unreached", "filled"};
    return names[static_cast<std::size_t>(zero)];
}

}  // namespace weldline
