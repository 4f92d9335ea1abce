#include "ShowSettings.h"

#include "Console.h"
#include "Tables.h"
#include "settings/ControlSection.h"

namespace weldline {

void showSettings(const SettingsOptions& options) {
    writeStandardOutput(options.check.empty()
                            ? defaultSectionText()
                            : controlTable(options.check, readControlFile(options.check),
                                           standardOutputTakesStyle()));
}

}  // namespace weldline
