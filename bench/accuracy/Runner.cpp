#include "Runner.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "base/Errors.h"
#include "bind/Analysis.h"
#include "settings/ControlSection.h"

namespace weldline::accuracy {

Runner::Runner() {
    m_folder = (std::filesystem::temp_directory_path() / "weldline-accuracy-XXXXXX").string();
    if (mkdtemp(m_folder.data()) == nullptr)
        throw RunError("temporary folder '" + m_folder + "' cannot be made");
}

Runner::~Runner() {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

Run Runner::run(const FvMesh& mesh, const BoundaryGroups& groups,
                const std::vector<float>& fillTime, const Scheme& scheme) const {
    HostOptions options;
    options.controlFile = m_folder + "/run.cmp";
    options.gradientSetSwitch = scheme.gradientSetSwitch;
    std::ofstream(options.controlFile) << sectionFromOptions(scheme.settings);
    const std::clock_t start = std::clock();
    HostModel model(mesh, groups, fillTime, options);
    Run run{runWeldLine(model), 0.0};
    run.seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    return run;
}

}  // namespace weldline::accuracy
