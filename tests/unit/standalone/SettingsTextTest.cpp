#include <gtest/gtest.h>

#include "base/Errors.h"
#include "settings/ControlSection.h"

namespace weldline::test {

namespace {

void expectReadBack(const Settings& settings) {
    EXPECT_EQ(readControlText(sectionFromSettings(settings)).settings, settings);
}

}  // namespace

TEST(SectionFromSettings, every_limit_with_every_method) {
    for (const int method : {1, 2, 3, 4})
        for (const double limit : {135.0, 145.0, 179.0}) {
            Settings settings;
            settings.method = method;
            settings.truncateAngle = limit;
            expectReadBack(settings);
        }
}

TEST(SectionFromSettings, every_value_to_the_last_bit) {
    Settings settings;
    settings.smoothBefore = 7;
    settings.smoothAfter = 0;
    settings.gradientIterations = 3;
    settings.boundaryAngle = 1.0 / 3.0;
    settings.gradientFilter = 0.1 + 0.2;
    settings.volumeFilter = 1e-300;
    settings.gradientMethod = 2;
    settings.truncateAngle = 145.0;
    expectReadBack(settings);
}

TEST(SectionFromSettings, the_trace_stays_off) {
    Settings settings;
    settings.debugOutput = true;
    EXPECT_FALSE(readControlText(sectionFromSettings(settings)).settings.debugOutput);
}

TEST(SectionFromSettings, other_limits_cannot_be) {
    Settings settings;
    settings.truncateAngle = 150.0;
    EXPECT_THROW(sectionFromSettings(settings), InputError);
}

}  // namespace weldline::test
